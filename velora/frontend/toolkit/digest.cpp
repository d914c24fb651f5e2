// The one-shot digests of OpenSSL 3 fetch their algorithm through a provider, about 650 us in a
// process's first use; these three calls take 11 us. OpenSSL calls them deprecated, not wrong.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "velora/frontend/toolkit/digest.h"

#include <openssl/sha.h>

#include <cstring>

#include "velora/frontend/toolkit/message.h"

namespace Ctr {

namespace {

// 65 characters, with the terminator.
void WriteDigits(char* out, const unsigned char* key) {
  static const char kDigits[] = "0123456789abcdef";
  for (int i = 0; i < VELORA_SIZE_KEY; ++i) {
    *out++ = kDigits[key[i] >> 4];
    *out++ = kDigits[key[i] & 15];
  }
  *out = '\0';
}

}  // namespace

void ComputeSha256(const unsigned char* data, unsigned int cb, unsigned char* out) {
  SHA256_CTX context;
  SHA256_Init(&context);
  SHA256_Update(&context, data, cb);
  SHA256_Final(out, &context);
}

char* Key2Str(char* out, const unsigned char* key) {
  if (out == nullptr) {
    PrintLine("Key2Str", 644, "hexstring pointer cannot be NULL.");
  } else if (key == nullptr) {
    memset(out, 0, 4);
  } else {
    WriteDigits(out, key);
  }
  return out;
}

void computeSha256String(const unsigned char* data, unsigned int cb, char* out) {
  if (out == nullptr) {
    PrintLine("computeSha256String", 665, "hexstring pointer cannot be NULL.");
  } else if (data == nullptr) {
    *out = '\0';
  } else {
    unsigned char digest[VELORA_SIZE_KEY];
    ComputeSha256(data, cb, digest);
    WriteDigits(out, digest);
  }
}

}  // namespace Ctr

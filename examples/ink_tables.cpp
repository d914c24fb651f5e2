// Asks the ink pipeline for a colour map, a gray curve and an alternate neutral, each under two
// print modes. Built against the installed tree, or by this one's CMake.
//
//   ink_tables PLATFORM COLOR GRAY NEUTRAL PACK...
//
// PLATFORM is a number; COLOR, GRAY and NEUTRAL are files with the three locators, PACK... the
// packs of the machine, the printer's first. Writes color.bin, gray.bin and neutral.bin, the
// records of the first print mode, into the current folder, and prints a line for each request.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "velora/wisp/api/door.h"

namespace ink = velora::v1::wisp::api;
using Bytes = std::vector<unsigned char>;

static Bytes ReadFile(const char* path) {
  Bytes bytes;
  if (FILE* file = fopen(path, "rb")) {
    for (int c = fgetc(file); c != EOF; c = fgetc(file)) {
      bytes.push_back(static_cast<unsigned char>(c));
    }
    fclose(file);
  }
  if (bytes.empty()) {
    fprintf(stderr, "ink_tables: cannot read %s\n", path);
    exit(2);
  }
  return bytes;
}

static void WriteFile(const char* path, const void* bytes, int size) {
  FILE* file = fopen(path, "wb");
  if (file == nullptr || fwrite(bytes, static_cast<size_t>(size), 1, file) != 1 ||
      fclose(file) != 0) {
    fprintf(stderr, "ink_tables: cannot write %s\n", path);
    exit(2);
  }
}

// Says how a request went, and keeps the record of the first print mode.
static int Tell(const char* path, int mode, int code, const void* record, int size) {
  if (code != 0) {
    printf("%-12s mode %d: failed with %d\n", path, mode, code);
    return 1;
  }
  printf("%-12s mode %d: %d bytes\n", path, mode, size);
  if (mode == 0) {
    WriteFile(path, record, size);
  }
  return 0;
}

int main(int argc, char** argv) {
  if (argc < 6) {
    fprintf(stderr, "usage: ink_tables PLATFORM COLOR GRAY NEUTRAL PACK...\n");
    return 2;
  }
  // Everything with a destructor is made ahead of the first Try, and outlives the last.
  const auto platform = static_cast<ink::EPlatform::Enum>(atoi(argv[1]));
  const Bytes colorLocator = ReadFile(argv[2]);
  const Bytes grayLocator = ReadFile(argv[3]);
  const Bytes neutralLocator = ReadFile(argv[4]);
  std::vector<Bytes> packs;
  for (int i = 5; i < argc; ++i) {
    packs.push_back(ReadFile(argv[i]));
  }
  const tWISPPrintModeMapping modes[2] = {
      {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1},
      {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_0, 0, 1},
  };

  // A locator travels in a record of the kind that it asks for.
  static WISPColorMap color;
  static WISPGrayCurve gray;
  static WISPAlternateNeutral neutral;
  if (colorLocator.size() > 0xFFFF || grayLocator.size() > VELORA_WISP_MAX_PAYLOAD ||
      neutralLocator.size() > VELORA_WISP_MAX_PAYLOAD) {
    fprintf(stderr, "ink_tables: a locator is too long\n");
    return 2;
  }
  color.payloadLength = static_cast<uint16_t>(colorLocator.size());
  memcpy(color.data.payload, colorLocator.data(), colorLocator.size());
  gray.payloadLength = static_cast<uint32_t>(grayLocator.size());
  memcpy(gray.curve, grayLocator.data(), grayLocator.size());
  neutral.payloadLength = static_cast<uint32_t>(neutralLocator.size());
  for (size_t i = 0; i < neutralLocator.size(); ++i) {
    neutral.nodes[i] = neutralLocator[i];
  }

  ink::_factory::IFactory* factory = ink::Open();
  if (factory == nullptr) {
    fprintf(stderr, "ink_tables: the library does not open\n");
    return 1;
  }
  ink::ISerializerHelper* helper = nullptr;
  ink::IArray<ink::IVelcase>* velcases = nullptr;
  ink::IPrintModeMappings* mappings = nullptr;
  ink::IVeltune* veltune = nullptr;
  int failures = 0;
  const int opened = ink::Try([&] {
    helper = factory->CreateSerializerHelper();
    helper->Init();
    velcases = factory->CreateArray_Velcase();
    velcases->Init(1, static_cast<int>(packs.size()));
    for (size_t i = 0; i < packs.size(); ++i) {
      ink::IVelcase* velcase = factory->CreateVelcase();
      velcases->Set(static_cast<int>(i), velcase);
      velcase->Destroy();  // from here on it is the array's
    }
    for (size_t i = 0; i < packs.size(); ++i) {
      // The supply family stands in a pack's second byte.
      velcases->Get(static_cast<int>(i))
          ->Init(static_cast<int>(packs[i].size()), packs[i].data(), helper,
                 ink::ISerializer::ETargetEndianness::Reversed,
                 static_cast<ink::ESupplyFamily::Enum>(packs[i][1]),
                 static_cast<unsigned int>(packs[i].size()));
    }
    mappings = factory->CreatePrintModeMappings();
    mappings->Init();
    veltune = factory->CreateVeltune();
    veltune->Init(platform, ink::EProductVariant::Enum(0), velcases, mappings, &modes[0]);
  });
  if (opened != 0) {
    fprintf(stderr, "ink_tables: the packs do not load: %d\n", opened);
    failures = 1;
  }

  for (int mode = 0; opened == 0 && mode < 2; ++mode) {
    static WISPColorMap colorMap;
    static WISPGrayCurve grayCurve;
    static WISPAlternateNeutral alternateNeutral;
    static int size;
    int code = ink::Try([&] {
      veltune->Update(&modes[mode]);
      size = veltune->PopulateWISPColorMap(0, "color", &color, sizeof colorMap, &colorMap);
    });
    failures += Tell("color.bin", mode, code, &colorMap, size);
    code = ink::Try([&] {
      size = veltune->PopulateWISPGrayCurve(0, "gray", &gray, sizeof grayCurve, &grayCurve);
    });
    failures += Tell("gray.bin", mode, code, &grayCurve, size);
    code = ink::Try([&] {
      size = veltune->PopulateWISPAlternateNeutral(0, "neutral", &neutral, sizeof alternateNeutral,
                                                   &alternateNeutral);
    });
    failures += Tell("neutral.bin", mode, code, &alternateNeutral, size);
  }

  // What was created ends in any order but the mappings, which outlive whoever looks into them.
  if (veltune != nullptr) veltune->Destroy();
  if (mappings != nullptr) mappings->Destroy();
  if (velcases != nullptr) velcases->Destroy();
  if (helper != nullptr) helper->Destroy();
  factory->Destroy();
  ink::Close();
  return failures == 0 ? 0 : 1;
}

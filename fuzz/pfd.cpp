// A PFD file, decoded channel by channel. The first byte names axis and channels.
#include <stdio.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "fuzz/support/promise.h"
#include "fuzz/support/toner_call.h"
#include "velora/frontend/toolkit/DifferenceColor.h"
#include "velora/frontend/toolkit/DifferenceMono.h"

namespace fuzz {

// Reads the file at `path` into a request of the vector's reference, and decodes what it has.
static void Decode(const char* path, bool mono, unsigned char channels) {
  const TonerCall& call = mono ? VectorGray() : VectorCmyk();
  ReferenceTable reference = {call.reference.data(), {}, {}};
  TableCorrections corrections = {{}, call.corrections.data()};
  for (int i = 0; i < 4; ++i) {
    reference.apCbat[i] = call.cbat[i].empty() ? nullptr : call.cbat[i].data();
    reference.acbCbat[i] = static_cast<uint16_t>(call.cbat[i].size());
    corrections.apKeys[i] = call.keys[i].empty() ? nullptr : call.keys[i].data();
  }
  const ctr_axis_type axis = mono ? CTR_AXIS_MONO : CTR_AXIS_P;
  CT_PROCESSING processing = {};
  processing.channels = mono ? 1 : channels;
  RawData raw('P', mono ? 'M' : 'P');
  raw.ClearData();
  unsigned char* file = nullptr;
  if (raw.readPfd(path, &file, &processing) &&
      raw.readReferenceTable(&reference, &processing, axis, CTR_MEDIA_P)) {
    raw.readTableCorrection(&corrections, &processing, axis, CTR_MEDIA_P);
    if (mono) {
      DifferenceMono curve('P', &raw, &processing);
      Expect(curve.status != 0 || curve.m_DiffTablePtr != nullptr, "a curve has no bytes");
    } else {
      for (int i = 0; i < 4; ++i) {
        if ((channels >> i & 1) != 0) {
          DifferenceColor plane(ContentKey(CtrColor::toChar(i), 'P', 'P'), &raw, &processing);
          Expect(plane.status != 0 || plane.m_DifferenceData != nullptr, "a plane has no bytes");
        }
      }
    }
  }
  free(file);
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int chosen = input.Byte();
  const Bytes bytes = input.Rest();
  const bool mono = (chosen & 0x10) != 0;
  const auto channels = static_cast<unsigned char>(chosen & 15);
  if (bytes.empty()) {
    return -1;
  }
  const int memory = memfd_create("pfd", 0);
  Expect(write(memory, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
         "the file is written");
  static char path[32];
  snprintf(path, sizeof path, "/proc/self/fd/%d", memory);
  static bool first = true;
  if (first) {
    const Unobserved unobserved;
    Run(VectorCmyk());  // what the libraries below keep for good, they take in their first calls
    Run(VectorGray());
    Decode(path, mono, channels);
    first = false;
  }
  const Promise promise;
  Decode(path, mono, channels);
  promise.Check();
  close(memory);
  return 0;
}

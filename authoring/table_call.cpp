#include "authoring/table_call.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

#include "velora/velora.h"

// The table entry keeps the boot record of each call allocated: that is its contract, and the only
// block that it leaves. Read by the leak sanitizer alone.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:MakeBootRecord\n";
}

namespace velora::authoring {
namespace {

auto* EntryOf(const SharedLibrary& library) {
  return library.Find("_velora_v2_ReconstructTable_Moth_Posix_So",
                      _velora_v2_ReconstructTable_Moth_Posix_So);
}

const unsigned char* DataOf(const Bytes& bytes) { return bytes.empty() ? nullptr : bytes.data(); }

}  // namespace

std::string ModeText(const PrintMode& mode) {
  static const char* const tables[] = {"rgb", "cmyk", "fuser blob"};
  const auto letter = [](const char* letters, int count, int value) {
    return value >= 0 && value < count ? std::string(1, letters[value]) : std::to_string(value);
  };
  const std::string table =
      mode.table >= 0 && mode.table < 3 ? tables[mode.table] : std::to_string(mode.table);
  return table + ", theme " + std::to_string(mode.theme) + ", media " +
         letter("PGCH", 4, mode.media) + ", axis " + letter("KPM", 3, mode.axis);
}

Device::Device() = default;

Device::Device(const std::string& path) : library_(path) { EntryOf(library_); }

TableResult Device::Rebuild(const TableCall& call) const {
  std::vector<ImagingBlob> blobs;
  std::vector<const ImagingBlob*> packs;
  for (const Bytes& pack : call.packs) {
    blobs.push_back({static_cast<uint32_t>(pack.size()), pack.data()});
  }
  for (const ImagingBlob& blob : blobs) packs.push_back(&blob);
  ReferenceTable reference{};
  TableCorrections corrections{};
  reference.data = DataOf(call.reference);
  corrections.data = DataOf(call.corrections);
  for (int i = 0; i < 4; ++i) {
    reference.apCbat[i] = DataOf(call.widths[i]);
    reference.acbCbat[i] = static_cast<uint16_t>(call.widths[i].size());
    corrections.apKeys[i] = DataOf(call.keys[i]);
  }
  TableResult result{false, Bytes(call.size), 0};
  auto* const entry = EntryOf(library_);
  const auto start = std::chrono::steady_clock::now();
  result.success =
      entry(call.platform, call.family, call.variant, static_cast<ctr_table_type>(call.mode.table),
            static_cast<ctr_theme_type>(call.mode.theme),
            static_cast<ctr_media_type>(call.mode.media),
            static_cast<ctr_axis_type>(call.mode.axis), static_cast<unsigned>(packs.size()),
            packs.data(), call.reference.empty() ? nullptr : &reference,
            call.corrections.empty() ? nullptr : &corrections,
            static_cast<unsigned>(result.buffer.size()), result.buffer.data()) != 0;
  result.microseconds =
      std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
  return result;
}

QuietErrors::QuietErrors() {
  std::fflush(stderr);
  saved_ = dup(STDERR_FILENO);
  const int file = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (file >= 0) {
    dup2(file, STDERR_FILENO);
    close(file);
  }
}

QuietErrors::~QuietErrors() {
  std::fflush(stderr);
  if (saved_ >= 0) {
    dup2(saved_, STDERR_FILENO);
    close(saved_);
  }
}

}  // namespace velora::authoring

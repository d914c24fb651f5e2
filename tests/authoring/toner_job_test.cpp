#include "authoring/toner_job.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace velora::authoring {
namespace {

Bytes Wave(int size, double phase) {
  Bytes table(size);
  for (int i = 0; i < size; ++i) {
    table[i] = static_cast<unsigned char>(128 + 90 * std::sin(phase + i * 0.013) + i * 7 % 5);
  }
  return table;
}

constexpr int kBlobSize = 300;

TonerJob FullJob() {
  TonerJob job;
  job.platform = 7;
  job.family = 4;
  job.variant = 2;
  job.printer_version = 3;
  job.supply_version = 2;
  job.reference = Wave(kTableSize, 0);
  job.gray_reference = Wave(kCurveSize, 0);
  Bytes corrected = Wave(kTableSize, 0.2);
  for (unsigned char& byte : corrected) byte ^= 8;
  job.tables = {{{1, 1, 0, 1}, Wave(kTableSize, 0.1), {}},
                {{1, 10, 3, 0}, Wave(kTableSize, 0.2), corrected}};
  job.curves = {{{1, 1, 0, 2}, Wave(kCurveSize, 0.1), Wave(kCurveSize, 0.3)},
                {{1, 2, 0, 2}, Wave(kCurveSize, 0.4), {}}};
  job.blobs = {{{2, 0, 1, 0}, Wave(kBlobSize, 0.5), {}}, {{2, 0, 2, 0}, {17}, {}}};
  job.settings = EncoderSettings{4, true, 0.3};
  return job;
}

TonerProduct Author(const TonerJob& job) {
  const QuietErrors quiet;
  return AuthorToner(job);
}

TableResult Rebuild(const Device& device, const TableCall& call) {
  const QuietErrors quiet;
  return device.Rebuild(call);
}

TEST(TonerJob, EveryTableComesBackFromTheDevice) {
  const TonerJob job = FullJob();
  const TonerProduct product = Author(job);
  ASSERT_EQ(product.packs.size(), 6u);
  ASSERT_EQ(product.calls.size(), 6u);
  // The library in this process and the shared one, between each other's calls.
  const Device own, shared(DefaultLibrary());
  for (const AuthoredCall& authored : product.calls) {
    for (const Device* device : {&own, &shared}) {
      const TableResult result = Rebuild(*device, authored.call);
      EXPECT_TRUE(result.success) << ModeText(authored.call.mode);
      EXPECT_EQ(result.buffer, authored.expected) << ModeText(authored.call.mode);
    }
    EXPECT_GT(authored.pack_bytes, 0);
    EXPECT_LT(authored.pack_bytes, product.PackBytes());
  }
  EXPECT_EQ(product.calls[0].expected, job.tables[0].wanted);
  EXPECT_EQ(product.calls[1].expected, job.tables[1].corrected);
  EXPECT_EQ(product.calls[2].expected, job.curves[0].corrected);
  EXPECT_EQ(product.calls[3].expected, job.curves[1].wanted);
  EXPECT_EQ(product.calls[4].expected, job.blobs[0].wanted);
}

TEST(TonerJob, APrintModeIsToldInLetters) {
  EXPECT_EQ(ModeText({1, 10, 3, 2}), "cmyk, theme 10, media H, axis M");
  for (const int none : {-1, 4}) {
    const std::string n = std::to_string(none);
    EXPECT_EQ(ModeText({none, none, none, none}),
              n + ", theme " + n + ", media " + n + ", axis " + n);
  }
}

TEST(TonerJob, AJobOfOneKindNeedsNoOther) {
  for (int kind = 0; kind < 3; ++kind) {
    TonerJob job = FullJob();
    // Curves with the smallest packets; tables without residue: what was foreseen is made.
    kind == 1 ? job.settings.reset() : void(job.settings->residue = false);
    if (kind != 0) job.tables.clear(), job.reference.clear();
    if (kind != 1) job.curves.clear(), job.gray_reference.clear();
    if (kind != 2) job.blobs.clear();
    const TonerProduct product = Author(job);
    EXPECT_EQ(product.packs.size(), kind == 0 ? 5u : 2u);
    for (const AuthoredCall& authored : product.calls) {
      EXPECT_EQ(Rebuild(Device(), authored.call).buffer, authored.expected) << kind;
    }
  }
}

TEST(TonerJob, TablesAreBoundToPrintModePrinterAndVersions) {
  const TonerProduct product = Author(FullJob());
  const auto succeeds = [&](void (*change)(TableCall & call, const TonerProduct& product)) {
    TableCall call = product.calls[0].call;
    change(call, product);
    return Rebuild(Device(), call).success;
  };
  EXPECT_TRUE(succeeds([](auto&, auto&) {}));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.mode.theme = 2; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.mode.media = 1; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.mode.axis = 0; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.platform = 6; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.family = 3; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.variant = 1; }));
  EXPECT_FALSE(succeeds([](auto& call, auto&) { call.packs.resize(4); }));
  // Another version of the printer's pack, and of yellow's.
  EXPECT_FALSE(succeeds([](auto& call, auto& product) {
    Pack pack = product.packs[0].pack;
    ++pack.version;
    call.packs[0] = WritePack(pack);
  }));
  EXPECT_FALSE(succeeds([](auto& call, auto& product) {
    Pack pack = product.packs[3].pack;
    --pack.version;
    call.packs[3] = WritePack(pack);
  }));
}

TEST(TonerJob, WhatCannotBeAuthoredIsRefused) {
  void (*const rows[])(TonerJob*) = {
      [](TonerJob* job) { *job = TonerJob(); },
      [](TonerJob* job) { job->reference.clear(); },
      [](TonerJob* job) { job->gray_reference.pop_back(); },
      [](TonerJob* job) { job->tables[0].wanted.pop_back(); },
      [](TonerJob* job) { job->tables[1].corrected.pop_back(); },
      [](TonerJob* job) { job->curves[0].wanted.clear(); },
      [](TonerJob* job) { job->blobs[0].corrected = {1}; },
      [](TonerJob* job) { job->tables[1].mode = job->tables[0].mode; },
      [](TonerJob* job) { job->tables[0].mode.theme = 11; },
      [](TonerJob* job) { job->platform = 14; },
      [](TonerJob* job) { job->settings->scalar = 0; },
  };
  for (const auto& spoil : rows) {
    TonerJob job = FullJob();
    spoil(&job);
    EXPECT_THROW(Author(job), std::invalid_argument) << (&spoil - rows);
  }
}

}  // namespace
}  // namespace velora::authoring

// Ink packs, written and read back; jobs, asked for through the ink door.
#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/ink_job.h"
#include "tests/authoring/message.h"

namespace velora::authoring {
namespace {

const TypeNames& Ink() { return TypeNames::Of(Pipeline::kInk); }

// A table whose planes differ, with flat places, and edges that are higher than a delta reaches.
Bytes Table(double phase) {
  Bytes table(kTableSize);
  for (int i = 0; i < kTableSize; ++i) {
    const int point = i % kPlaneSize, a = point / 289, b = point / 17 % 17, c = point % 17;
    const double slope = 110 + 9 * std::sin(phase + a * 0.4 + i / kPlaneSize) * b - 5 * c;
    const double value = a == 3 && b == 4 && c > 12 ? slope + 85 : slope;
    table[i] = static_cast<unsigned char>(std::fmin(255, std::fmax(0, value)));
  }
  return table;
}

InkJob Job(InkForm form, InkSettings settings) {
  InkJob job;
  job.platform = 7;
  job.family = 4;
  job.variant = 2;
  job.version = 3;
  job.index = 5;
  job.form = form;
  job.settings = settings;
  job.description = {6, {0, 3, 9}, 7, 1};
  job.tables = {{{8, -1, 10, 2, 0}, Table(0)}, {{8, 1, 10, 2, 0}, Table(1)}};
  return job;
}

std::vector<InkResult> Ask(const InkDevice& device, const InkProduct& product, int repeat = 1) {
  std::vector<InkRequest> requests;
  for (const InkAnswer& answer : product.answers) requests.push_back(answer.request);
  return device.Ask(product.caller, requests, repeat);
}

TEST(InkJob, EveryRecordComesBackFromTheDevice) {
  const InkDevice own, shared(DefaultLibrary());
  for (const InkForm form : {InkForm::kString, InkForm::kNodes}) {
    Bytes last_file;
    for (const InkSettings& settings : {InkSettings{0, 1}, {0, 2}, {4, 1}, {6, 3}}) {
      SCOPED_TRACE(SettingsText(form, settings));
      const InkJob job = Job(form, settings);
      const InkProduct product = AuthorInk(job);
      EXPECT_NE(product.file(), last_file);
      last_file = product.file();
      const std::vector<InkResult> results = Ask(shared, product, 3);
      ASSERT_EQ(results.size(), 2u);
      for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(results[i].record, product.answers[i].expected);
        EXPECT_LT(results[i].hit, results[i].miss);
        EXPECT_GT(product.answers[i].pack_bytes, 0);
        const ByteDifference difference =
            CompareBytes(TableOf(results[i].record), job.tables[i].wanted);
        const bool is_lossless = settings.level == 0 && settings.range == 1;
        EXPECT_EQ(difference.differing == 0, is_lossless);
        EXPECT_LT(difference.largest, 60);
      }
      EXPECT_EQ(Ask(own, product)[1].record, results[1].record);
    }
  }
}

TEST(InkJob, TablesAreBoundToPrintModePrinterAndLocator) {
  const InkProduct product = AuthorInk(Job(InkForm::kNodes, {2, 2}));
  const struct {
    const char* what;
    void (*change)(InkCaller*, InkRequest*);
  } rows[] = {
      {"media", [](InkCaller*, InkRequest* request) { request->mode.media = 7; }},
      {"quality", [](InkCaller*, InkRequest* request) { request->mode.quality = 0; }},
      {"subtype", [](InkCaller*, InkRequest* request) { request->mode.subtype = 1; }},
      {"pen set", [](InkCaller*, InkRequest* request) { request->mode.pen_set = 1; }},
      {"variant", [](InkCaller* caller, InkRequest*) { caller->variant = 1; }},
      {"locator", [](InkCaller*, InkRequest* request) { request->locator.pop_back(); }},
      {"index", [](InkCaller*, InkRequest* request) { request->index = 1000; }},
      {"no pathname", [](InkCaller*, InkRequest* request) { request->pathname.clear(); }},
  };
  for (const auto& row : rows) {
    InkCaller caller = product.caller;
    InkRequest request = product.answers[0].request;
    row.change(&caller, &request);
    // The request that failed spoils nothing for the next one.
    const auto results = InkDevice().Ask(caller, {request, product.answers[1].request});
    EXPECT_NE(results[0].code, 0) << row.what;
    EXPECT_TRUE(results[0].record.empty()) << row.what;
    EXPECT_EQ(results[1].code == 0, caller.variant == 2) << row.what;
  }
  InkCaller caller = product.caller;
  caller.family = 3;
  EXPECT_THROW(InkDevice().Ask(caller, {}), std::runtime_error);
  InkRequest request = product.answers[0].request;
  request.index = 998;
  // More answers than the cache has indices left.
  EXPECT_EQ(InkDevice().Ask(product.caller, {request}, 4)[0].code, 0);
  request.locator.resize(70000);
  EXPECT_THROW(InkDevice().Ask(product.caller, {request}), std::runtime_error);
}

TEST(InkJob, TheOnlyTableHasTheWholePack) {
  InkJob job = Job(InkForm::kString, {});
  job.tables.pop_back();
  const InkProduct product = AuthorInk(job);
  EXPECT_EQ(product.answers[0].pack_bytes, static_cast<int>(product.file().size()));
}

TEST(InkJob, WhatCannotBeAuthoredIsRefused) {
  const struct {
    void (*spoil)(InkJob*);
    const char* message;
  } rows[] = {
      {[](InkJob* job) { job->tables.clear(); }, "without a table"},
      {[](InkJob* job) { job->tables[1].wanted.pop_back(); }, "no table of 19652 bytes"},
      {[](InkJob* job) { job->tables[1].mode = job->tables[0].mode; }, "two tables"},
      {[](InkJob* job) { job->tables[0].mode.media = 3; }, "a number for media 3"},
      {[](InkJob* job) { job->tables[0].mode.pen_set = 3; }, "a number for pen set 3"},
      {[](InkJob* job) { job->tables[0].mode.quality = -3; }, "a number for quality -3"},
      {[](InkJob* job) { job->settings.level = 8; }, "LossyCompressionLevel 8: the library"},
      {[](InkJob* job) { job->settings.range = 0; }, "DeltaRange 0: the library"},
      {[](InkJob* job) { job->platform = 14; }, "Platform 14: the library"},
      {[](InkJob* job) { job->family = 8; }, "SupplyFamily 8: the library"},
      {[](InkJob* job) { job->description.resolution = 11; }, "Resolution 11: the library"},
      {[](InkJob* job) { job->description.drops_per_level.resize(17); }, "16 levels at most"},
  };
  for (const auto& row : rows) {
    InkJob job = Job(InkForm::kString, {});
    row.spoil(&job);
    EXPECT_THAT(MessageOf([&] { AuthorInk(job); }), HasSubstr(row.message));
  }
}

// An image stores equal operators once: what could then be read with the wrong properties is
// refused.
TEST(InkPack, DeltasThatWouldBeMixedUpAreRefused) {
  const int delta = Ink().TypeOf(Role::kKind, "Nodes_Delta");
  const int count = Ink().TypeOf(Role::kProperty, "NodeCount");
  const int range = Ink().TypeOf(Role::kProperty, "DeltaRange");
  const int role = Ink().TypeOf(Role::kProperty, "ComponentRole");
  const Value media{Ink().TypeOf(Role::kTag, "MediaType"), 1};
  const Step zeros{Ink().OperatorOf(delta, "FromData"), {255, 223}, {}, {}};
  const struct {
    std::vector<Value> one, other;
    Bytes bytes;
    bool is_refused;
  } rows[] = {
      {{{count, 17}, {range, 1}}, {{count, 17}, {range, 2}}, zeros.bytes, true},
      {{{count, 17}, {range, 1}}, {{count, 9}, {range, 1}}, zeros.bytes, true},
      {{{count, 17}, {range, 1}}, {{count, 17}, {range, 2}}, {255, 222, 128}, false},
      // The range that a component has without saying so.
      {{{count, 17}, {range, 1}}, {{count, 17}}, zeros.bytes, true},
      {{{count, 17}, {range, 2}}, {{count, 17}, {role, 1}}, zeros.bytes, false},
      {{{count, 17}, {range, 1}}, {{count, 17}, {role, 2}}, zeros.bytes, false},
  };
  for (const auto& row : rows) {
    Pack pack;
    pack.pipeline = Pipeline::kInk;
    pack.components = {{delta, 1, Condition(), {media}, row.one, {zeros}},
                       {delta, 1, Condition(), {media}, row.other, {zeros}}};
    pack.components[1].version = 2;
    pack.components[1].recipe[0].bytes = row.bytes;
    EXPECT_THAT(MessageOf([&] { WritePack(pack); }),
                HasSubstr(row.is_refused ? "another node count or delta range" : "no failure"))
        << &row - rows;
  }
}

// So is a condition in which one operator would hold two results at once.
TEST(InkPack, ConditionsThatWouldShareAResultAreRefused) {
  const struct {
    const char* condition;
    bool is_refused;
  } rows[] = {
      {"Platform = 1 and Platform = 2 and Platform = 3 and Platform = 4", false},
      {"Platform = 1 or Platform = 2 and Platform = 3", false},
      {"Platform = 1 and not Platform = 2", false},
      {"not (Platform = 1 and Platform = 2) or Platform = 3 and Platform = 4", true},
      {"(Platform = 1 or Platform = 2) and (Platform = 3 or Platform = 4)", true},
      {"not Platform = 1 and not Platform = 2", true},
      {"not Platform = 1 or Platform = 3 and not Platform = 2", false},
  };
  for (const Pipeline pipeline : {Pipeline::kInk, Pipeline::kToner}) {
    const TypeNames& names = TypeNames::Of(pipeline);
    const int map = names.TypeOf(Role::kKind, "ColorMap");
    const Value platform{names.TypeOf(Role::kTag, "Platform"), 1};
    for (const auto& row : rows) {
      Pack pack;
      pack.pipeline = pipeline;
      const char* build = pipeline == Pipeline::kInk ? "Build_CMYK" : "Build_RGBtoCMYK";
      pack.components = {{map,
                          1,
                          Condition::Parse(row.condition, names),
                          {platform},
                          {},
                          {{names.OperatorOf(map, build), {}, {}, {}}}}};
      EXPECT_THAT(MessageOf([&] { WritePack(pack); }),
                  HasSubstr(row.is_refused ? "one result for both" : "no failure"))
          << row.condition;
    }
  }
}

}  // namespace
}  // namespace velora::authoring

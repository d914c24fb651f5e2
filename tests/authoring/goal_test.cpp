#include "authoring/goal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "authoring/ink_job.h"
#include "authoring/toner_job.h"
#include "tests/authoring/message.h"

namespace velora::authoring {
namespace {

// Smooth tables whose inks run into 0 and 255, as those of real printers do.
Bytes Smooth(double phase) {
  Bytes table(kTableSize);
  for (int i = 0; i < kTableSize; ++i) {
    const int a = i / 289 % kGridPoints, b = i / kGridPoints % kGridPoints, c = i % kGridPoints;
    const double value = 120 + 14 * (a - 8) - 9 * (b - 8) * std::cos(phase) + 6 * (c - 8) +
                         25 * std::sin(phase + a * 0.5 + b * c * 0.03 + i / kPlaneSize);
    table[i] = static_cast<unsigned char>(std::clamp(value, 0.0, 255.0));
  }
  return table;
}

std::shared_ptr<const LabMeter> AnyOutput() {
  for (const Profile& profile : FindProfiles()) {
    if (profile.kind == ProfileKind::kCmykOutput) return std::make_shared<LabMeter>(profile);
  }
  return nullptr;
}

TonerJob Toner() {
  TonerJob job;
  job.reference = Smooth(0);
  // Words of 0 beside others: no condition can ask for a 0.
  job.tables = {{{1, 0, 0, 1}, Smooth(0.4), {}}, {{1, 3, 2, 0}, Smooth(0.9), {}}};
  job.layout = PackLayout::kSmallest;
  return job;
}

InkJob Ink() {
  InkJob job;
  job.tables = {{{0, 1, 0, 1, 0}, Smooth(0.4)}, {{2, 1, 10, 1, 0}, Smooth(0.9)}};
  return job;
}

struct Packed {
  long bytes;
  std::vector<Bytes> rebuilt;
  std::vector<TableErrors> promised;
};

Packed Pack(TonerJob job) {
  const QuietErrors quiet;
  const TonerProduct product = AuthorToner(job);
  Packed packed{product.PackBytes(), {}, product.errors};
  for (const AuthoredCall& made : product.calls) {
    packed.rebuilt.push_back(Device().Rebuild(made.call).buffer);
    EXPECT_EQ(packed.rebuilt.back(), made.expected);
    TableCall other = made.call;
    other.mode.theme = 3 - other.mode.theme;  // words of both tables, but of neither
    EXPECT_FALSE(Device().Rebuild(other).success);
  }
  return packed;
}

Packed Pack(const InkJob& job) {
  const InkProduct product = AuthorInk(job);
  Packed packed{static_cast<long>(product.file().size()), {}, product.errors};
  std::vector<InkRequest> requests;
  for (const InkAnswer& answer : product.answers) requests.push_back(answer.request);
  const std::vector<InkResult> results = InkDevice().Ask(product.caller, requests);
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(results[i].record, product.answers[i].expected);
    packed.rebuilt.push_back(TableOf(results[i].record));
  }
  requests[0].mode.media = requests[1].mode.media;
  EXPECT_NE(InkDevice().Ask(product.caller, {requests[0]})[0].code, 0);
  return packed;
}

std::vector<Goal> ColorGoals() {
  Goal tight, loose;
  tight.mean = 0.6, tight.p95 = 1.6, tight.p99 = 2.5;
  loose.mean = 2, loose.largest = 12;
  return {Goal(), tight, loose};
}

std::vector<Goal> InkGoals() {
  Goal inks;
  inks.mean = 2, inks.ink = 12, inks.ink_sum = 16;
  return {inks};
}

// What the library rebuilds is what was promised, each table is within its bounds, and looser
// bounds take fewer bytes.
template <class Job>
void ExpectGoalsKept(Job job, const std::shared_ptr<const LabMeter>& lab,
                     const std::vector<Goal>& goals) {
  long previous = 1 << 30;
  for (const Goal& goal : goals) {
    job.goal = goal;
    for (auto& table : job.tables) table.lab = lab;
    const Packed packed = Pack(job);
    for (std::size_t t = 0; t < job.tables.size(); ++t) {
      const TableErrors errors = TableMeter(job.tables[t].wanted, lab).Measure(packed.rebuilt[t]);
      EXPECT_LE(Excess(errors, goal), 1) << GoalText(goal);
      EXPECT_EQ(errors.cie2000.mean, packed.promised[t].cie2000.mean) << GoalText(goal);
      EXPECT_EQ(errors.ink.largest, packed.promised[t].ink.largest) << GoalText(goal);
    }
    EXPECT_LT(packed.bytes, previous) << GoalText(goal);
    previous = packed.bytes;
  }
}

TEST(Goal, TonerPacksKeepIt) {
  ExpectGoalsKept(Toner(), AnyOutput(), ColorGoals());
  ExpectGoalsKept(Toner(), nullptr, InkGoals());
}

TEST(Goal, InkPacksKeepIt) {
  ExpectGoalsKept(Ink(), AnyOutput(), ColorGoals());
  ExpectGoalsKept(Ink(), nullptr, InkGoals());
}

template <class Job>
void ExpectTableGoalsKept(Job job) {
  job.goal = Goal();
  job.tables[1].goal.emplace().mean = 3;
  const Packed packed = Pack(job);
  EXPECT_EQ(packed.rebuilt[0], job.tables[0].wanted);
  EXPECT_NE(packed.rebuilt[1], job.tables[1].wanted);
}

TEST(Goal, ATableMayHaveItsOwn) {
  ExpectTableGoalsKept(Toner());
  ExpectTableGoalsKept(Ink());
}

TEST(Goal, ABudgetIsKeptAndUsed) {
  InkJob job = Ink();
  job.budget = 6000;
  const Packed packed = Pack(job);
  EXPECT_LE(packed.bytes, job.budget);
  EXPECT_GT(packed.bytes, job.budget * 3 / 4);
  job.budget = 100;
  EXPECT_THROW(Pack(job), GoalMissed);
}

TEST(Goal, ASearchEndsWhenItIsToldTo) {
  TonerJob toner = Toner();
  InkJob ink = Ink();
  ink.goal = Goal();
  toner.search.report = ink.search.report = [](const Progress&) { return false; };
  EXPECT_THROW(AuthorToner(toner), Interrupted);
  EXPECT_THROW(AuthorInk(ink), Interrupted);
}

TEST(Printer, ReadsLaterPacksWithItsOwnWidths) {
  const QuietErrors quiet;
  TonerJob job = Toner();
  job.goal.mean = 1;
  const TonerProduct first = AuthorToner(job);
  job.tables.resize(1);
  job.tables[0].wanted = Smooth(1.3);
  for (int c = 0; c < kChannels; ++c) job.widths[c] = first.calls[0].call.widths[c];
  const TonerProduct later = AuthorToner(job);
  TableCall call = later.calls[0].call;
  for (int c = 0; c < kChannels; ++c) EXPECT_EQ(call.widths[c], first.calls[0].call.widths[c]);
  EXPECT_EQ(Device().Rebuild(call).buffer, later.calls[0].expected);
  EXPECT_LE(Excess(later.errors[0], job.goal), 1);
  // Without any width, a table that is farther off than a residue reaches.
  for (Bytes& widths : job.widths) std::fill(widths.begin(), widths.end(), 0);
  job.reference.assign(kTableSize, 0);
  EXPECT_THAT(MessageOf([&] { AuthorToner(job); }),
              testing::HasSubstr("do not fit the width tables of the printer"));
}

Bytes Noise(std::size_t size) {
  static unsigned noise = 1;
  Bytes bytes(size);
  for (unsigned char& byte : bytes) {
    noise = noise * 1664525 + 1013904223;
    byte = static_cast<unsigned char>(noise >> 26);
  }
  return bytes;
}

TEST(Printer, APackThatIsTooLargeIsCutIntoFurtherOnes) {
  TonerJob job;
  for (int blob = 0; blob < 2; ++blob) {
    job.blobs.push_back({{2, blob, 0, 0}, Noise(26000), {}});
  }
  const QuietErrors quiet;
  const TonerProduct product = AuthorToner(job);
  ASSERT_EQ(product.packs.size(), 3u);
  EXPECT_EQ(product.packs[2].name, "fuser-2");
  for (const AuthoredCall& made : product.calls) {
    EXPECT_EQ(Device().Rebuild(made.call).buffer, made.expected);
  }
}

// Before a search, by what cannot become smaller.
TEST(Printer, MoreThanACallTakesIsRefusedWithWhatWouldFit) {
  TonerJob toner;
  InkJob ink;
  ink.goal = Goal();
  toner.reference = Noise(kTableSize);
  toner.search.report =
      ink.search.report = [](const Progress&) -> bool { throw std::logic_error("a search"); };
  for (int i = 0; i < 44; ++i) {
    toner.tables.push_back({{1, i % 11, i % 4, i % 2}, Noise(kTableSize), {}});
  }
  const int media[] = {0, 1, 2, 5, 7, 8};
  for (int i = 0; i < 60; ++i) {
    ink.tables.push_back({{media[i % 6], i / 6 % 5 - 2, 0, i / 30 + 1, 0}, Noise(kTableSize)});
  }
  const QuietErrors quiet;
  EXPECT_THAT(
      MessageOf([&] { AuthorToner(toner); }),
      testing::ContainsRegex("a call takes 327670; at most the first [123]. of 44 .*, up to "
                             "cmyk, theme "));
  EXPECT_THAT(MessageOf([&] { AuthorInk(ink); }),
              testing::ContainsRegex("a call takes 409608; at most the first [2345]. of 60 "));
}

}  // namespace
}  // namespace velora::authoring

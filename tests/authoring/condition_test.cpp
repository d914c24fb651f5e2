#include "authoring/condition.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/pack.h"

namespace velora::authoring {
namespace {

// Type ids as packs have them.
constexpr int kAlways = 60, kCyan = 61, kPrinter = 65, kPlatform = 66, kTheme = 70;
constexpr int kAnd = 80, kOr = 81, kNot = 82;

const TypeNames& Toner() { return TypeNames::Of(Pipeline::kToner); }

TEST(Condition, TextBecomesAPostfixListAndComesBack) {
  const struct {
    const char* text;
    std::vector<Value> postfix;
  } rows[] = {
      {"always", {{kAlways}}},
      {"Platform = 127", {{kPlatform, 127}}},
      {"Platform = 3 and ThemeType = 1", {{kPlatform, 3}, {kTheme, 1}, {kAnd}}},
      {"Platform = 3 or Platform = 4 and ThemeType = 1",
       {{kPlatform, 3}, {kPlatform, 4}, {kTheme, 1}, {kAnd}, {kOr}}},
      {"(Platform = 3 or Platform = 4) and ThemeType = 1",
       {{kPlatform, 3}, {kPlatform, 4}, {kOr}, {kTheme, 1}, {kAnd}}},
      {"Platform = 1 and (Platform = 2 and Platform = 3)",
       {{kPlatform, 1}, {kPlatform, 2}, {kPlatform, 3}, {kAnd}, {kAnd}}},
      {"not not Platform = 1", {{kPlatform, 1}, {kNot}, {kNot}}},
      {"not (Platform = 1 and not VelcaseVersion_Cyan = 2) or VelcaseVersion_Printer = 3",
       {{kPlatform, 1}, {kCyan, 2}, {kNot}, {kAnd}, {kNot}, {kPrinter, 3}, {kOr}}},
  };
  for (const auto& row : rows) {
    const Condition condition = Condition::Parse(row.text, Toner());
    EXPECT_EQ(condition.postfix(), row.postfix) << row.text;
    EXPECT_EQ(condition.Text(Toner()), row.text);
    EXPECT_TRUE(condition.IsSound()) << row.text;
  }
  EXPECT_EQ(Condition::Parse("( Condition_Platform=3 )", Toner()).Text(Toner()), "Platform = 3");
}

TEST(Condition, WhatIsNoExpressionIsRefused) {
  for (const char* text :
       {"", "Platform", "Platform 3", "Platform = ", "Platform = x", "Platform = 123456789",
        "Platform = 3 and", "and Platform = 3", "not", "(Platform = 3", "Platform = 3)",
        "Platform = 3 Platform = 4", "Weather = 3", "Channel == 3", "= 3"}) {
    EXPECT_THROW(Condition::Parse(text, Toner()), std::invalid_argument) << text;
  }
}

TEST(Condition, AListThatIsNoExpressionIsShownAsItStands) {
  for (const std::vector<Value>& postfix : std::vector<std::vector<Value>>{
           {}, {{kAnd}}, {{kPlatform, 1}, {kAnd}}, {{kPlatform, 1}, {kPlatform, 2}}, {{kNot}}}) {
    EXPECT_FALSE(Condition(postfix).IsSound());
  }
  EXPECT_EQ(Condition({{kPlatform, 1}, {kOr}, {7}}).Text(Toner()),
            "malformed: Platform = 1 or " + Toner().NameOf(7) + " = 0");
}

TEST(TypeNames, NamesAreFoundByTheirRole) {
  EXPECT_EQ(ChannelName(128), "128");
  EXPECT_EQ(ChannelName(ReadPack(WritePack(Pack())).pack.channel), "printer");
  const TypeNames& names = Toner();
  EXPECT_EQ(names.TypeOf(Role::kTag, "Platform"), 48);
  EXPECT_EQ(names.TypeOf(Role::kCondition, "VelcaseVersion_Fuser"), 74);
  EXPECT_EQ(names.OperatorOf(names.TypeOf(Role::kKind, "Packet_MonoCBAT"), "FromData"), 97);
  EXPECT_EQ(names.NameOf(126), "type 126");
  EXPECT_THROW(names.TypeOf(Role::kTag, "Weather"), std::invalid_argument);
  EXPECT_THROW(names.OperatorOf(27, "Build_Monolithic"), std::invalid_argument);
}

}  // namespace
}  // namespace velora::authoring

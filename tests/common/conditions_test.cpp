// Conditions: what an expression says, what it takes off its list, and how it fails.
#include "tests/support/toner_fixture.h"

namespace velora_test {
namespace {

class ConditionsTest : public TonerTest {
 protected:
  // Platform 1, product variant 0, supply family 0; a printer's pack and a black one of version 3.
  fenn::IPrintModeParameters* NewParameters() {
    return Veltune({Pack(127, {}), Pack(0, {})})->GetPrintModeParameters();
  }

  fenn::IPrintModeParameters* parameters = NewParameters();
};

// Packs are there for 65 (printer) and 64 (black) alone. The caller's table type 1, theme 0 and
// axis 1 are compared as they are. An And takes both operands whatever the first one says; what
// is left over does not count.
TEST_F(ConditionsTest, Expressions) {
  constexpr int kTrue = -1, kFalse = -2;
  const struct {
    int result;
    std::vector<const char*> expressions;
  } rows[] = {
      {kTrue,
       {"60", "66=1", "67=0", "68=0", "65=3", "64=3", "69=1", "72=1", "66=2 82", "66=1 67=0 80",
        "66=1 67=1 81", "66=2 67=0 81", "66=1 66=2 66=2 80 81", "61=3 66=1"}},
      {kFalse,
       {"66=2", "67=1", "68=5", "65=4", "69=2", "70=1", "66=1 82", "66=1 67=1 80", "66=2 67=0 80",
        "66=2 67=1 81", "66=2 66=1 66=1 81 80"}},
      {4000,
       {"61=3", "62=3", "63=3", "73=3", "74=3", "66=2 61=3 80", "61=3 66=2 80", "61=3 66=1 81", "",
        "80", "66=1 80", "82"}}};
  for (const auto& row : rows) {
    for (const char* words : row.expressions) {
      fenn::IConditions* conditions = Conditions(words);
      for (int i = 0; i < 2; ++i) {  // the list is not used up
        volatile bool holds = false;
        const int code = CodeOf([&] { holds = conditions->Evaluate(parameters); });
        EXPECT_EQ(code != 0 ? code : holds ? kTrue : kFalse, row.result) << words;
      }
    }
  }
  EXPECT_EQ(CodeOf([&] { Conditions("60")->Evaluate(nullptr); }), 3000);
  fenn::IConditions* conditions = Keep(factory->CreateConditions());
  EXPECT_EQ(CodeOf([&] { conditions->Evaluate(parameters); }), 4000);
  fenn::ILinkedList<Condition>* const nothing = nullptr;
  EXPECT_EQ(CodeOf([&] { conditions->Init(nothing); }), 3000);
  conditions->Init(Conditions("66=1"));
  EXPECT_TRUE(conditions->Evaluate(parameters));
}

TEST_F(ConditionsTest, OperatorsAnswerForTheParametersTheyWereResolvedWith) {
  fenn::IPrintModeParameters* others = NewParameters();
  for (const char* words : {"60", "66=1", "65=3", "72=1", "66=1 82", "66=1 66=1 80"}) {
    auto* list = Expression(words);
    auto* root = list->GetTail()->GetValue();
    const bool leaf = !root->IsOperator();
    EXPECT_EQ(leaf, list->GetCount() == 1) << words;
    EXPECT_EQ(CodeOf([&] { root->Evaluate(parameters); }), leaf ? 4000 : 3000) << words;
    EXPECT_EQ(CodeOf([&] { root->Resolve(list, nullptr); }), 3000) << words;
    EXPECT_EQ(CodeOf([&] { root->Resolve(nullptr, parameters); }), leaf ? 0 : 3000) << words;
    // The list without the root, as an evaluation would hand it on.
    list->Remove(list->GetTail());
    EXPECT_EQ(CodeOf([&] { root->Resolve(list, parameters); }), 0) << words;
    EXPECT_EQ(list->GetCount(), 0) << words;
    EXPECT_EQ(CodeOf([&] { root->Evaluate(parameters); }), 0) << words;
    EXPECT_EQ(CodeOf([&] { root->Evaluate(others); }), leaf ? 4000 : 3000) << words;
    EXPECT_EQ(CodeOf([&] { root->Evaluate(nullptr); }), 3000) << words;
  }
  // What an operator has taken before it finds too little is gone.
  for (const char* words : {"66=1 80", "66=1 81", "82 82", "66=1 80 82"}) {
    auto* list = Expression(words);
    auto* root = list->GetTail()->GetValue();
    list->Remove(list->GetTail());
    EXPECT_EQ(CodeOf([&] { root->Resolve(list, parameters); }), 4000) << words;
    EXPECT_EQ(list->GetCount(), 0) << words;
  }
}

// As long as an image lets an expression be, and just above what waits on the stack, in both shapes
// that a tree can have.
TEST_F(ConditionsTest, LongExpressionsAreAnswered) {
  static int length;
  const auto* words = "66=1 66=2 81 82";
  auto* first = Expression(words)->GetHead();
  Condition *holds = first->GetValue(), *fails = first->next->GetValue(),
            *either = first->next->next->GetValue(),
            *negation = first->next->next->next->GetValue();
  const struct {
    const char* name;
    bool result;
    Condition* (*at)(int, Condition*, Condition*, Condition*, Condition*);
  } rows[] = {
      {"a chain of Not", true,
       [](int i, Condition* yes, Condition*, Condition*, Condition* no) {
         return i == 0 ? yes : no;
       }},
      {"each Or around all before it", true,
       [](int i, Condition* yes, Condition* no, Condition* any, Condition*) {
         return i == 0 ? yes : i % 2 == 1 ? no : any;
       }},
      {"each Or around all behind it", false,
       [](int i, Condition*, Condition* no, Condition* any, Condition*) {
         return i <= length / 2 ? no : any;
       }},
      {"one operand too few", false,
       [](int i, Condition* yes, Condition*, Condition* any, Condition*) {
         return i < length / 2 ? yes : any;
       }},
  };
  for (const int count : {49, 100001}) {
    length = count;
    for (const auto& row : rows) {
      auto* list = Keep(factory->CreateLinkedList_Conditions_Operator());
      list->Init(Ids::kArray_Conditions_Operator);
      for (int i = 0; i < length; ++i) {
        list->Add(list->GetTail(), row.at(i, holds, fails, either, negation));
      }
      fenn::IConditions* conditions = Keep(factory->CreateConditions());
      conditions->Init(list);
      volatile bool result = !row.result;
      const int code = CodeOf([&] { result = conditions->Evaluate(parameters); });
      EXPECT_EQ(code, row.at == rows[3].at ? 4000 : 0) << row.name;
      EXPECT_EQ(result, row.at == rows[3].at ? !row.result : row.result) << row.name;
    }
  }
}

}  // namespace
}  // namespace velora_test

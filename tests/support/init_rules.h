// What every Init promises: an object with several holders stays as it is, and one that a failure
// leaves is blank.
// Room: tests. The caller owns the objects.
#pragma once

#include "plinth/core/api/ISerializeable.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {

// Expects that `init(object)` raises 1 while the live object has a second holder, with both
// references good after it, then `code`, and leaves it blank. Answers whether it was blank.
template <class T, class Init>
bool ExpectInitFails(T* object, int code, const Init& init) {
  object->AddRef();
  EXPECT_EQ(CodeOf([&] { init(object); }), 1);
  volatile int holders = 0;
  EXPECT_EQ(CodeOf([&] { holders = object->GetRefCount(); }), 0);
  EXPECT_EQ(holders, 2);
  if (holders != 2) {
    return false;
  }
  object->Destroy();
  EXPECT_EQ(CodeOf([&] { init(object); }), code);
  const int blank = CodeOf([&] { object->CheckThis(); });
  EXPECT_EQ(blank, 4000);
  return blank == 4000;
}

}  // namespace velora_test

// What a refusal says.
// Room: tests.
#pragma once

#include <gmock/gmock.h>

#include <exception>
#include <string>

namespace velora::authoring {

using testing::HasSubstr;

template <class Act>
std::string MessageOf(Act act) {
  try {
    act();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no failure";
}

}  // namespace velora::authoring

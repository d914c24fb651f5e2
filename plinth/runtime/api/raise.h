// A raise from inline code in the interfaces, inside the library and in a program outside it.
// Room: plinth/runtime. Makes the exception, which the frame that it lands in owns.
#pragma once

#include "velora/export.h"

namespace plinth::v1::api {

namespace _exports::common::exception {
class CException_General;
class CException_Parameter_Invalid;
class CException_This_Invalid;
}  // namespace _exports::common::exception
using namespace _exports::common::exception;

// Throws a new exception of the class to the calling thread's innermost frame, which outside the
// library is a Try.
template <class Exception>
[[noreturn]] void Raise();

extern template VELORA_API void Raise<CException_General>();
extern template VELORA_API void Raise<CException_Parameter_Invalid>();
extern template VELORA_API void Raise<CException_This_Invalid>();

}  // namespace plinth::v1::api

#define PLINTH_RAISE(Exception) ::plinth::v1::api::Raise<Exception>()

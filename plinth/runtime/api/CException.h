// A raised failure: the object that a jump carries from frame to frame, and its ten classes.
// Room: plinth/runtime. Made by a raise from the boot manager's memory; owned by the frame that
// catches it, whose collector destroys it.
#pragma once

namespace plinth::v1::api::_exports::common::exception {

class CException {
 public:
  explicit CException(int code);
  virtual ~CException();
  // Runs the destructor and frees the object through the foundation's boot manager. One that is
  // in a thread's reserve is only destructed.
  virtual void Destroy();
  // Clears code and text. `Delete` does the same: an exception owns nothing.
  virtual void Reset();
  virtual void Delete();

  int code;           // what longjmp carries; never 0
  char message[200];  // part of the record; nothing writes a text into it
  bool reserved;      // lies in the thread's reserve, because the heap was exhausted
};

// Class, code, and when it is raised.
#define PLINTH_EXCEPTIONS(X)                                                                 \
  X(CException_General, 1)                    /* a condition of a method does not hold */    \
  X(CException_NotImplemented, 2)             /* an operation that a class does not offer */ \
  X(CException_WrongInitMethod, 3)            /* an Init overload that a class forbids */    \
  X(CException_File_OpenFailed, 1000)         /* CHandler_File_Posix::Open */                \
  X(CException_File_ReadFailed, 1001)         /* CHandler_File_Posix::Read */                \
  X(CException_File_WriteFailed, 1002)        /* CHandler_File_Posix::Write */               \
  X(CException_Memory_AllocationFailed, 2000) /* Allocate, when asked to raise */            \
  X(CException_Memory_OutputBufferInsufficient, 2001) /* a string does not fit its buffer */ \
  X(CException_Parameter_Invalid, 3000)               /* a null or out-of-range argument */  \
  X(CException_This_Invalid, 4000)                    /* a blank object or a broken invariant */

#define PLINTH_DECLARE_EXCEPTION(Name, Code) \
  class Name : public CException {           \
   public:                                   \
    static constexpr int kCode = Code;       \
    Name() : CException(kCode) {}            \
  };
PLINTH_EXCEPTIONS(PLINTH_DECLARE_EXCEPTION)
#undef PLINTH_DECLARE_EXCEPTION

}  // namespace plinth::v1::api::_exports::common::exception

namespace plinth::v1::api {
using namespace _exports::common::exception;
}

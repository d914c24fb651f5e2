// An object of the data model: serializeable, and watched by callbacks.
// Room: velora/common. The callbacks record is its caller's. Failures are raised.
#pragma once

#include "plinth/core/api/IArray.h"
#include "plinth/core/api/ISerializer.h"
#include "velora/common/Vocabulary.h"

namespace velora::common::api {

using plinth::v1::api::IArray;
using plinth::v1::api::IArray_int32;
using plinth::v1::api::IArray_uint8;
using plinth::v1::api::ISerializer;
using plinth::v1::api::ISerializerHelper;

template <class Configuration>
class ISerializeable : public virtual plinth::v1::api::ISerializeable {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISerializeable);
  // A caller's record to watch the work. Each function gets `context`; a null one is not called.
  // What a function returns goes back to whoever made the call, and stops nothing.
  struct Callbacks {
    using Function = int (*)(void* context);
    using SizeFunction = int (*)(void* context, int size);

    void* context;
    void* unused;
    Function locate;  // before and after: one word for both
    Function build;
    Function buildDone;
    Function resolve;
    Function resolveDone;
    SizeFunction reportSizeEncoded;
  };

  using plinth::v1::api::ISerializeable::Init;
  virtual void Init(ISerializeable* other) = 0;  // the copy: takes the callbacks over
  // The record must outlive the object, or be taken off by a null.
  virtual void SetCallbacks(Callbacks* callbacks) = 0;
  // Null where there is none. It stays its owner's.
  virtual Callbacks* GetCallbacks() const = 0;
  // Each calls the record's function of that name and returns what it returns; 0 without one. The
  // two of a lookup share one function. None raises by itself; what a callback raises passes on.
  virtual int Call_Callback_Locate() = 0;
  virtual int Call_Callback_Locate_Done() = 0;
  virtual int Call_Callback_Build() = 0;
  virtual int Call_Callback_Build_Done() = 0;
  virtual int Call_Callback_Resolve() = 0;
  virtual int Call_Callback_Resolve_Done() = 0;
  virtual int Call_Callback_ReportSize_Encoded(int size) = 0;
};

}  // namespace velora::common::api

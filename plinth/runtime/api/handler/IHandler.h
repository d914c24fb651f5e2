// What the platform's four handlers have in common.
// Room: plinth/runtime. No counts: the platform owns a handler and ends it through `Destroy`.
#pragma once

namespace plinth::v1::api::_exports::common::handler {

class IHandler {
 public:
  [[gnu::always_inline]] IHandler() = default;
  // Makes a blank handler usable; false for a handler whose `Init` takes an argument.
  virtual bool Init() = 0;
  [[gnu::always_inline]] virtual ~IHandler() = default;
  // Runs the destructor and frees the handler through the boot manager it lies in.
  virtual void Destroy() = 0;
  // Whether `Init` has succeeded.
  virtual bool IsValid() const = 0;
  // Raises `CException_This_Invalid` on a handler that is not valid.
  virtual void CheckThis() const = 0;
};

}  // namespace plinth::v1::api::_exports::common::handler

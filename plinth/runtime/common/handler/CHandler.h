// The validity that every handler carries.
// Room: plinth/runtime. In the boot manager's memory; owned by the platform. `CheckThis` raises
// through the flat block.
#pragma once

#include "plinth/runtime/api/handler/IHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class CHandler : public virtual IHandler {
 public:
  [[gnu::always_inline]] CHandler() : valid(false) {}
  bool Init() override;
  [[gnu::always_inline]] ~CHandler() override = default;
  void Destroy() override;
  bool IsValid() const override;
  void CheckThis() const override;
  virtual void Reset();
  virtual void Delete();

 protected:
  bool valid;
};

}  // namespace plinth::v1::api::_exports::common::handler

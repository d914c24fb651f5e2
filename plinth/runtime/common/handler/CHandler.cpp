#include "plinth/runtime/common/handler/CHandler.h"

#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api::_exports::common::handler {

bool CHandler::Init() {
  Delete();
  valid = true;
  return true;
}

void CHandler::Destroy() {
  // The start of the whole object, whatever its class.
  void* const memory = dynamic_cast<void*>(this);
  this->~CHandler();
  operator delete(memory, Booted().bootManager, false);
}

bool CHandler::IsValid() const { return valid; }

void CHandler::CheckThis() const {
  if (!IsValid()) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CHandler::Reset() { valid = false; }

void CHandler::Delete() { Reset(); }

}  // namespace plinth::v1::api::_exports::common::handler

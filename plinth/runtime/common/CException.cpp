#include "plinth/runtime/api/CException.h"

#include <string.h>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api::_exports::common::exception {

CException::CException(int exceptionCode) : code(exceptionCode), message(), reserved(false) {}

CException::~CException() = default;

// Called by the collector of the frame that caught it, or by the frame itself.
void CException::Destroy() {
  // Its memory is the jump manager's.
  if (reserved) {
    this->~CException();
  } else {
    boot_manager::PlacementDelete(Booted().bootManager, this);
  }
}

void CException::Reset() {
  code = 0;
  memset(message, 0, sizeof message);
}

void CException::Delete() { Reset(); }

}  // namespace plinth::v1::api::_exports::common::exception

#include "velora/wisp/core/Cache.h"

namespace velora::v1::wisp::core {

using namespace plinth::v1::api::_exports::common::exception;

void CNeverStored::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

void CNeverStored::Init(int, api::ISerializer*, void*) { PLINTH_RAISE(CException_NotImplemented); }

void CNeverStored::Sort(bool) { PLINTH_RAISE(CException_NotImplemented); }

void CNeverStored::Serialize(api::ISerializer*, void*) { PLINTH_RAISE(CException_NotImplemented); }

bool CNeverStored::IsEqualTo(plinth::v1::api::ISerializeable*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

bool CNeverStored::IsLessThan(plinth::v1::api::ISerializeable*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

}  // namespace velora::v1::wisp::core

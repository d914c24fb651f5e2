#include "plinth/runtime/common/handler/CHandler_File.h"

#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api::_exports::common::handler {

void* CHandler_File::Open(const char*, int) { PLINTH_RAISE(CException_NotImplemented); }

int CHandler_File::GetSize(void*) { PLINTH_RAISE(CException_NotImplemented); }

int CHandler_File::Read(void*, int, int, void*) { PLINTH_RAISE(CException_NotImplemented); }

int CHandler_File::Write(void*, int, int, void*) { PLINTH_RAISE(CException_NotImplemented); }

void CHandler_File::Close(void*) { PLINTH_RAISE(CException_NotImplemented); }

}  // namespace plinth::v1::api::_exports::common::handler

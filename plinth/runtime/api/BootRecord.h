// The three objects that all layers share, as whoever boots hands them on.
// Room: plinth/runtime. Owns nothing; the layers take the three pointers out of it and do not keep
// it.
#pragma once

namespace plinth::v1::api {
class IBootManager;
class CThreadContextManager;
class CPlatform;
}  // namespace plinth::v1::api

struct BootRecord {
  plinth::v1::api::IBootManager* bootManager;
  plinth::v1::api::CThreadContextManager* threadContextManager;
  plinth::v1::api::CPlatform* platform;
};

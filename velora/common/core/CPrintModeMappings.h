// A table of all print modes of a pipeline, each one canonical object.
// Room: velora/common. Owns its mappings, from the platform. A blank table asked raises
// `CException_This_Invalid`; out of memory leaves it blank.
#pragma once

#include "velora/common/core/create.h"

namespace velora::common::core {

using namespace plinth::v1::api::_exports::common::exception;

// `Interface` has the count, `Interface::kCount`; `Mapping` is the concrete class.
template <class Configuration, class Interface, class Mapping>
class CPrintModeMappingsOf : public Interface {
 public:
  CPrintModeMappingsOf() : m_apMappings(nullptr), m_bInitialized(false) {}
  ~CPrintModeMappingsOf() override { CPrintModeMappingsOf::Delete(); }

  void Destroy() override {
    plinth::v1::api::platform::PlacementDelete(plinth::v1::api::Slots<Configuration>().platform,
                                               this);
  }

  void Delete() override {
    plinth::v1::api::CPlatform* platform = plinth::v1::api::Slots<Configuration>().platform;
    for (int i = 0; m_apMappings != nullptr && i < Interface::kCount; ++i) {
      plinth::v1::api::platform::PlacementDelete(platform, m_apMappings[i]);
    }
    if (m_apMappings != nullptr) {
      operator delete[](m_apMappings, platform, false, false);
    }
    m_apMappings = nullptr;
    m_bInitialized = false;
  }

 protected:
  // Makes the table anew: `init` gives each mapping its values, by its place.
  template <class InitMapping>
  void Fill(InitMapping init) {
    PLINTH_FRAME(Configuration) {
      Delete();
      m_apMappings = new (plinth::v1::api::Slots<Configuration>().platform, true, true)
          Mapping*[Interface::kCount];
      for (int place = 0; place < Interface::kCount; ++place) {
        m_apMappings[place] = Create<Configuration, Mapping>();
        init(m_apMappings[place], place);
      }
      m_bInitialized = true;
    }
    PLINTH_CATCH {
      Delete();
      PLINTH_RETHROW;
    }
    PLINTH_END
  }

  void CheckThis() const {
    if (!m_bInitialized || m_apMappings == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
  }

  Mapping* GetMapping(int place) const {
    CheckThis();
    if (place < 0 || place >= Interface::kCount) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    return m_apMappings[place];
  }

 private:
  Mapping** m_apMappings;
  bool m_bInitialized;
};

}  // namespace velora::common::core

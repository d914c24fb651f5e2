// A table of all print modes of a pipeline, each one canonical object.
// Room: velora/common. Owns its mappings, one block from the platform. A blank table asked raises
// `CException_This_Invalid`; out of memory leaves it blank.
#pragma once

#include "velora/common/Vocabulary.h"
#include "velora/common/core/Create.h"

namespace velora::common::core {

using namespace plinth::v1::api::_exports::common::exception;

// `Mapping` is the pipeline's concrete class; its interface of the table has the count, `kCount`.
template <class Configuration, class Mapping>
class CPrintModeMappingsOf : public Vocabulary<Configuration>::IPrintModeMappings {
 public:
  using Interface = typename Vocabulary<Configuration>::IPrintModeMappings;

  CPrintModeMappingsOf() : m_aMappings(nullptr), m_bInitialized(false) {}
  ~CPrintModeMappingsOf() override { CPrintModeMappingsOf::Delete(); }

  void Destroy() override {
    plinth::v1::api::platform::PlacementDelete(plinth::v1::api::Slots<Configuration>().platform,
                                               this);
  }

  void Delete() override {
    if (m_aMappings != nullptr) {
      for (int i = 0; i < Interface::kCount; ++i) {
        m_aMappings[i].~Mapping();
      }
      operator delete[](m_aMappings, plinth::v1::api::Slots<Configuration>().platform, false,
                        false);
    }
    m_aMappings = nullptr;
    m_bInitialized = false;
  }

 protected:
  // Makes the table anew: `init` gives each mapping its values, by its place.
  template <class InitMapping>
  void Fill(InitMapping init) {
    PLINTH_FRAME(Configuration) {
      Delete();
      m_aMappings = static_cast<Mapping*>(operator new[](
          sizeof(Mapping) * Interface::kCount, plinth::v1::api::Slots<Configuration>().platform,
          true, true));
      // All are constructed before the first is given values: a raise then finds sound objects to
      // end.
      for (int place = 0; place < Interface::kCount; ++place) {
        ::new (static_cast<void*>(&m_aMappings[place])) Mapping;
      }
      for (int place = 0; place < Interface::kCount; ++place) {
        init(&m_aMappings[place], place);
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
    if (!m_bInitialized || m_aMappings == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
  }

  // Stays the table's, and is the one object of its print mode: it may be compared by address. A
  // place outside of [0..kCount) raises `CException_This_Invalid`.
  Mapping* GetMapping(int place) const {
    CheckThis();
    if (place < 0 || place >= Interface::kCount) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    return &m_aMappings[place];
  }

 private:
  // `Interface::kCount` of them, or null.
  Mapping* m_aMappings;
  bool m_bInitialized;
};

}  // namespace velora::common::core

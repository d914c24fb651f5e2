// The object that answers an ink printer's requests.
// Room: velora/wisp. Holds one reference each on parameters, packs, combined pack and caches.
// Errors: see its interface; packs of different supply families, or none,
// `CException_This_Invalid`.
#pragma once

#include "velora/common/core/CVeltune.h"
#include "velora/wisp/api/IVeltune.h"

namespace velora::v1::wisp::core {

using api::Configuration;

class CVeltune : public common::core::CVeltune<Configuration>, public virtual api::IVeltune {
 public:
  using Base = common::core::CVeltune<Configuration>;

  // In Cache.h.
  template <class Kind>
  class Cache;
  // Room of a new cache, in indices; it grows on demand.
  static constexpr int kCachedIndices = 20;

  CVeltune();
  ~CVeltune() override;
  using Base::Init;
  void Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
            api::IArray<api::IVelcase>* newVelcases, api::IPrintModeMappings* mappings,
            const tWISPPrintModeMapping* record) override;
  void Init(api::IVeltune* other) override;
  void Update(const tWISPPrintModeMapping* record) override;
  int PopulateWISPColorMap(int index, const char* pathname, const WISPColorMap* input, int capacity,
                           WISPColorMap* output) override;
  WISPColorMap* BuildWISPColorMap(int index, const char* pathname,
                                  const WISPColorMap* input) override;
  int PopulateWISPGrayCurve(int index, const char* pathname, const WISPGrayCurve* input,
                            int capacity, WISPGrayCurve* output) override;
  WISPGrayCurve* BuildWISPGrayCurve(int index, const char* pathname,
                                    const WISPGrayCurve* input) override;
  int PopulateWISPAlternateNeutral(int index, const char* pathname,
                                   const WISPAlternateNeutral* input, int capacity,
                                   WISPAlternateNeutral* output) override;
  WISPAlternateNeutral* BuildWISPAlternateNeutral(int index, const char* pathname,
                                                  const WISPAlternateNeutral* input) override;
  const char* GetPathname_Locator_ColorMap(int index,
                                           api::IPrintModeMapping* mapping) const override;
  unsigned int GetChecksum_ColorMap(int index, api::IPrintModeMapping* mapping) const override;
  api::IArray<api::IVelcase>* GetArray_Velcases() const override;
  api::IVelcase* GetVelcase_Combined() const override;
  api::ICache<api::IColorMap>* GetCache_ColorMap() const override;
  api::ICache<api::IGrayCurve>* GetCache_GrayCurve() const override;
  api::ICache<api::IAlternateNeutral>* GetCache_AlternateNeutral() const override;
  bool IsUpToDate(const tWISPPrintModeMapping* record) const override;
  api::IPrintModeMapping* GetPrintModeMapping(api::IPrintModeParameters* parameters) const override;
#define WISP_LOCATOR(Name, List) api::I##Name* Locate##Name(api::I##Name* reference) override;
  WISP_KINDS(WISP_LOCATOR)
#undef WISP_LOCATOR
  api::IColorMap* LocateColorMap(int index, const char* pathname,
                                 api::IArray_uint8* locator) override;
  api::IGrayCurve* LocateGrayCurve(int index, const char* pathname,
                                   api::IArray_uint8* locator) override;
  api::IAlternateNeutral* LocateAlternateNeutral(int index, const char* pathname,
                                                 api::IArray_uint8* locator) override;
  void SetLocatorIndex(WISPColorMap* record, int index) const override;
  int GetLocatorIndex(const WISPColorMap* record) const override;
  void SetPrintModeMapping(WISPColorMap* record, api::IPrintModeMapping* mapping) const override;
  api::IPrintModeMapping* GetPrintModeMapping(const WISPColorMap* record) const override;
  void FreeRecord(void* record) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 protected:
  void CheckMembers() const;

 private:
  api::IPrintModeMapping* GetPrintModeMapping() const;
  static api::IPrintModeParameters* Init_BuildPrintModeParameters(
      api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
      api::IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
      api::IArray<api::IVelcase>* velcases);
  // The cached component of the present print mode, or a new one that is built and cached.
  template <class Class, class Kind>
  Kind* Locate_WithCaching(api::ICache<Kind>* cache, int index, const char* pathname,
                           api::IArray_uint8* locator,
                           common::api::IComponentList<Configuration, Kind>* list);
  // The latter, for whoever has looked into the cache. The caller owns the reference.
  template <class Class, class Kind>
  Kind* BuildIntoCache(api::ICache<Kind>* cache, int index, const char* pathname,
                       api::IArray_uint8* locator,
                       common::api::IComponentList<Configuration, Kind>* list);
  // The bodies of Populate... and Build... for the three records.
  template <class Record>
  int Populate(int index, const char* pathname, const Record* input, int capacity, Record* output);
  // Copies a table that fits out, and marks it.
  template <class Record, class Data>
  int Write(Data* data, int index, int capacity, Record* output) const;
  template <class Record>
  Record* Build(int index, const char* pathname, const Record* input);

  // The packs as they were given; the parameters share the same array.
  plinth::v1::core::Counted<api::IArray<api::IVelcase>> m_pArray_Velcases;
  // All packs in one, sorted: what every lookup searches.
  plinth::v1::core::Counted<api::IVelcase> m_pVelcase_Combined;
  plinth::v1::core::Counted<api::ICache<api::IColorMap>> m_pCache_ColorMap;
  plinth::v1::core::Counted<api::ICache<api::IGrayCurve>> m_pCache_GrayCurve;
  plinth::v1::core::Counted<api::ICache<api::IAlternateNeutral>> m_pCache_AlternateNeutral;
};

}  // namespace velora::v1::wisp::core

// The object that an ink printer keeps and asks for its tables, and the caches behind it.
// Room: velora/wisp. Shares the packs; the mappings are the caller's and must outlive it. One
// thread at a time. A table goes to the caller's record in one copy, behind the last point of
// failure, and a failed request leaves the caches as they were.
//
// A request names what is wanted by a locator, which travels in a record, and by two things that
// only the caches look at: the locator's index [0..1000) and a pathname of at least one character.
// The same index must come with the same locator: within a print mode, the index is the key.
#pragma once

#include "velora/common/api/IVeltune.h"
#include "velora/wisp/api/IPrintModeParameters.h"
#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::api {

// The finished components of one kind, by locator index and print mode. `Serialize`, `Sort`, the
// comparisons and the reading `Init` of a cache and its parts raise `CException_NotImplemented`.
template <class Kind>
class ICache : public virtual plinth::v1::api::ISerializeable {
 public:
  PLINTH_INLINE_CONSTRUCTION(ICache);
  static constexpr int kMaxIndices = 1000;

  // What was built for one print mode. Getters give no new reference.
  class IEntry : public virtual plinth::v1::api::ISerializeable {
   public:
    PLINTH_INLINE_CONSTRUCTION(IEntry);
    using plinth::v1::api::ISerializeable::Init;
    // Copies the pathname, shares the component. Null, or an empty pathname, raises
    // `CException_Parameter_Invalid`.
    virtual void Init(const char* pathname, IPrintModeMapping* mapping, Kind* component) = 0;
    virtual void Init(IEntry* other) = 0;
    // The pathname is the entry's copy and ends with it; the mapping is its table's.
    virtual const char* GetPathname() const = 0;
    virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
    virtual Kind* GetComponent() const = 0;
  };

  // The entries of one index, newest first. The oldest goes when a new one would be too many.
  class IBucket : public virtual plinth::v1::api::ISerializeable {
   public:
    PLINTH_INLINE_CONSTRUCTION(IBucket);
    using plinth::v1::api::ISerializeable::Init;
    virtual void Init(int maxEntries) = 0;  // 1 or more
    // New entries, which share the other's components.
    virtual void Init(IBucket* other) = 0;
    // Puts a new entry in front, without a search for one of the same mapping. A null or an empty
    // pathname raises `CException_Parameter_Invalid`; a failure leaves the bucket as it was.
    virtual void AddEntry(const char* pathname, IPrintModeMapping* mapping, Kind* component) = 0;
    virtual int GetMaxEntries() const = 0;
    virtual ILinkedList<IEntry>* GetLinkedList_Entries() const = 0;
  };

  using plinth::v1::api::ISerializeable::Init;
  virtual void Init(int indices) = 0;    // [1..1000]; grows on demand
  virtual void Init(ICache* other) = 0;  // shares the components
  // Null for an index or a mapping that has none. A null mapping raises
  // `CException_Parameter_Invalid` where the index has entries.
  virtual IEntry* FindEntry(int index, IPrintModeMapping* mapping) const = 0;
  // Shares the component, which then may share another's data, see below. An index out of [0..1000)
  // or a null raises `CException_Parameter_Invalid`, a component without data
  // `CException_This_Invalid`.
  virtual void AddComponent(int index, const char* pathname, IPrintModeMapping* mapping,
                            Kind* component) = 0;
  // Lets the component share the data of another in the cache that has the same checksum. Data is
  // not compared any further. Without such a one nothing changes.
  virtual void DeduplicateComponentData(Kind* component) = 0;
  // Indices that there is room for, with entries or without.
  virtual int GetCount_Indices() const = 0;
};

class IVeltune : public virtual common::api::IVeltune<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVeltune);
  using common::api::IVeltune<Configuration>::Init;
  // Merges the packs, of one supply family, into a sorted one, and makes empty caches. The packs'
  // own lists stay as they are. A null argument raises `CException_Parameter_Invalid`; packs of
  // different families, or none, `CException_This_Invalid`. A failure leaves the object blank.
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IArray<IVelcase>* velcases, IPrintModeMappings* mappings,
                    const tWISPPrintModeMapping* record) = 0;
  // The copy: its caches are its own, and share what they hold. The parameters are shared: an
  // `Update` of either changes the print mode of both.
  void Init(IVeltune* other) override = 0;
  // Changes the print mode. What was built stays cached. A null record raises
  // `CException_Parameter_Invalid` and changes nothing.
  virtual void Update(const tWISPPrintModeMapping* record) = 0;

  // The tables. `input` carries the locator and may be the output as well. `capacity` counts the
  // bytes of the output record; too few for the table raise `CException_General`, none at all, a
  // null record, or a payload out of its length `CException_Parameter_Invalid`. Populate... returns
  // the bytes that it wrote. Build... returns a new record of full size, which the caller gives
  // back with FreeRecord.
  //
  // Four inks of 17 x 17 x 17 nodes. The answer is marked with index and print mode.
  virtual int PopulateWISPColorMap(int index, const char* pathname, const WISPColorMap* input,
                                   int capacity, WISPColorMap* output) = 0;
  virtual WISPColorMap* BuildWISPColorMap(int index, const char* pathname,
                                          const WISPColorMap* input) = 0;
  // 256 levels.
  virtual int PopulateWISPGrayCurve(int index, const char* pathname, const WISPGrayCurve* input,
                                    int capacity, WISPGrayCurve* output) = 0;
  virtual WISPGrayCurve* BuildWISPGrayCurve(int index, const char* pathname,
                                            const WISPGrayCurve* input) = 0;
  // Four inks of 17 nodes.
  virtual int PopulateWISPAlternateNeutral(int index, const char* pathname,
                                           const WISPAlternateNeutral* input, int capacity,
                                           WISPAlternateNeutral* output) = 0;
  virtual WISPAlternateNeutral* BuildWISPAlternateNeutral(int index, const char* pathname,
                                                          const WISPAlternateNeutral* input) = 0;

  // Of the cached colour map; null and 0 where there is none. The pathname is the cache's and ends
  // with its entry.
  virtual const char* GetPathname_Locator_ColorMap(int index, IPrintModeMapping* mapping) const = 0;
  virtual unsigned int GetChecksum_ColorMap(int index, IPrintModeMapping* mapping) const = 0;

  // What it was made with, the merged pack, and the caches. Getters give no new reference.
  virtual IArray<IVelcase>* GetArray_Velcases() const = 0;
  virtual IVelcase* GetVelcase_Combined() const = 0;
  virtual ICache<IColorMap>* GetCache_ColorMap() const = 0;
  virtual ICache<IGrayCurve>* GetCache_GrayCurve() const = 0;
  virtual ICache<IAlternateNeutral>* GetCache_AlternateNeutral() const = 0;
  // Whether an `Update` with this record would change nothing.
  virtual bool IsUpToDate(const tWISPPrintModeMapping* record) const = 0;
  // The canonical object of the parameters' print mode.
  virtual IPrintModeMapping* GetPrintModeMapping(IPrintModeParameters* parameters) const = 0;

  // The locators. Each finds the component of its kind for the tags and properties of `reference`,
  // past the cache, and returns a copy, with a reference for the caller. None that fits raises
  // `CException_General`.
  virtual IColorMap* LocateColorMap(IColorMap* reference) = 0;
  virtual IChannelMap* LocateChannelMap(IChannelMap* reference) = 0;
  virtual INodes_Neutral* LocateNodes_Neutral(INodes_Neutral* reference) = 0;
  virtual INodes_Seed* LocateNodes_Seed(INodes_Seed* reference) = 0;
  virtual INodes_Delta* LocateNodes_Delta(INodes_Delta* reference) = 0;
  virtual IGrayCurve* LocateGrayCurve(IGrayCurve* reference) = 0;
  virtual IAlternateNeutralChannel* LocateAlternateNeutralChannel(
      IAlternateNeutralChannel* reference) = 0;
  virtual IAlternateNeutral* LocateAlternateNeutral(IAlternateNeutral* reference) = 0;

  // The locator of a kind, for code that is written once for all kinds.
  IColorMap* Locate(IColorMap* reference) { return LocateColorMap(reference); }
  IChannelMap* Locate(IChannelMap* reference) { return LocateChannelMap(reference); }
  INodes_Neutral* Locate(INodes_Neutral* reference) { return LocateNodes_Neutral(reference); }
  INodes_Seed* Locate(INodes_Seed* reference) { return LocateNodes_Seed(reference); }
  INodes_Delta* Locate(INodes_Delta* reference) { return LocateNodes_Delta(reference); }
  IGrayCurve* Locate(IGrayCurve* reference) { return LocateGrayCurve(reference); }
  IAlternateNeutralChannel* Locate(IAlternateNeutralChannel* reference) {
    return LocateAlternateNeutralChannel(reference);
  }
  IAlternateNeutral* Locate(IAlternateNeutral* reference) {
    return LocateAlternateNeutral(reference);
  }

  // From a locator's bytes, through the cache: a component that has its data, with a reference for
  // the caller.
  virtual IColorMap* LocateColorMap(int index, const char* pathname, IArray_uint8* locator) = 0;
  virtual IGrayCurve* LocateGrayCurve(int index, const char* pathname, IArray_uint8* locator) = 0;
  virtual IAlternateNeutral* LocateAlternateNeutral(int index, const char* pathname,
                                                    IArray_uint8* locator) = 0;

  // The two marks of an answered request. A null record, a negative index and a null mapping raise
  // `CException_Parameter_Invalid`. The mapping of an unmarked record is null.
  virtual void SetLocatorIndex(WISPColorMap* record, int index) const = 0;
  virtual int GetLocatorIndex(const WISPColorMap* record) const = 0;
  // The mark is a token, good as long as the table of mappings: a mapping that is not of it raises
  // `CException_Parameter_Invalid` where a pointer does not fit into the record.
  virtual void SetPrintModeMapping(WISPColorMap* record, IPrintModeMapping* mapping) const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping(const WISPColorMap* record) const = 0;

  // Frees a record that Build... returned. Null is ignored.
  virtual void FreeRecord(void* record) const = 0;
};

}  // namespace velora::v1::wisp::api

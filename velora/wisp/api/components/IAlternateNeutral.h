// An alternate neutral: another neutral diagonal for a colour map; and one ink of it.
// Room: velora/wisp. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt and IShared.
#pragma once

#include "velora/wisp/api/components/IChannelData.h"
#include "velora/wisp/api/components/ITable.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

// One ink of 17 nodes.
class IAlternateNeutralChannel
    : public virtual common::api::IBuilt<Configuration, IAlternateNeutralChannelData>,
      public Kind<TypeIds::kAlternateNeutralChannel, TypeIds::kAlternateNeutralChannels,
                  TypeIds::kArray_AlternateNeutralChannel, true,
                  TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutralChannel);
  struct IOperator {
    // One ink as 17 bytes.
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IAlternateNeutralChannelData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      virtual void Init(IProperties* properties, IArray_int32* nodes) = 0;  // 17 of them
      virtual void Init(IBuild_Monolithic* other) = 0;
      // Bytes and data come without a new reference; no data raises `CException_This_Invalid`.
      virtual IArray_uint8* GetArray_uint8_Nodes_Encoded() const = 0;
      virtual IAlternateNeutralChannelData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IAlternateNeutralChannelData* GetAlternateNeutralChannelData() const { return GetData(); }
      void DestroyAlternateNeutralChannelData() { DestroyData(); }
    };
  };
  IAlternateNeutralChannelData* BuildAlternateNeutralChannelData(IVeltune* veltune) {
    return BuildData(veltune);
  }
  IAlternateNeutralChannelData* GetAlternateNeutralChannelData() const { return GetData(); }
};

// The node area counts, with the part of it that has no nodes: bytes 340 to 851 of the record.
class IAlternateNeutralData : public virtual IRecordData<WISPAlternateNeutral, 1, 340, 852> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutralData);
  int GetSize_WISPAlternateNeutral() const { return GetSize(); }
  const WISPAlternateNeutral* GetWISPAlternateNeutral() const { return GetRecord(); }
};

// Four inks. A locator's bytes are a reference to one.
class IAlternateNeutral : public virtual ITable<IAlternateNeutralData>,
                          public Kind<TypeIds::kAlternateNeutral, TypeIds::kAlternateNeutrals,
                                      TypeIds::kArray_AlternateNeutral, true,
                                      TypeIds::kAlternateNeutral_Operator_Build_CMYK> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutral);
  struct IOperator {
    // Takes four channels, in the order of the record's inks.
    class IBuild_CMYK : public virtual IRecipe::IBuild<IAlternateNeutralData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_CMYK);
      IAlternateNeutralData* GetAlternateNeutralData() const { return GetData(); }
      void DestroyAlternateNeutralData() { DestroyData(); }
    };
  };
  IAlternateNeutralData* BuildAlternateNeutralData(IVeltune* veltune) { return BuildData(veltune); }
  void SetAlternateNeutralData(IAlternateNeutralData* data) { SetData(data); }
  IAlternateNeutralData* GetAlternateNeutralData() const { return GetData(); }
};

}  // namespace velora::v1::wisp::api

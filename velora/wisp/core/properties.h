// The ink properties, and what reads them: bare functions, and the helper.
// Room: velora/wisp. Errors: see CValue and IPropertiesHelper.
#pragma once

#include "velora/common/core/CList.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/common/core/CValue.h"
#include "velora/wisp/api/properties.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core {

namespace properties {

using CChannel = common::core::properties::CChannel<Configuration>;
using CComponentRole = common::core::CPropertyOf<Configuration, api::properties::IComponentRole,
                                                 api::TypeIds::kComponentRole>;
using CDropVolumeOffset =
    common::core::CPropertyOf<Configuration, api::properties::IDropVolumeOffset,
                              api::TypeIds::kDropVolumeOffset>;
using CLevelCount = common::core::CPropertyOf<Configuration, api::properties::ILevelCount,
                                              api::TypeIds::kLevelCount>;
using CLossyCompressionLevel =
    common::core::CPropertyOf<Configuration, api::properties::ILossyCompressionLevel,
                              api::TypeIds::kLossyCompressionLevel>;
using CNominalDropVolume =
    common::core::CPropertyOf<Configuration, api::properties::INominalDropVolume,
                              api::TypeIds::kNominalDropVolume>;
using CResolution = common::core::CPropertyOf<Configuration, api::properties::IResolution,
                                              api::TypeIds::kResolution>;
using CDeltaRange = common::core::CPropertyOf<Configuration, api::properties::IDeltaRange,
                                              api::TypeIds::kDeltaRange>;

// The setter checks its range, as `Init` does.
class CNodeCount : public common::core::CPropertyOf<Configuration, api::properties::INodeCount,
                                                    api::TypeIds::kNodeCount> {
 public:
  CNodeCount();
  void SetNodeCount(api::ENodeCount::Enum count) override;
};

// Holds one reference on its array, which a copy shares.
class CDropsPerLevel
    : public common::core::CStoredArray<Configuration, common::core::CProperty<Configuration>,
                                        api::properties::IDropsPerLevel,
                                        api::TypeIds::kDropsPerLevel> {
 public:
  CDropsPerLevel();
  ~CDropsPerLevel() override;
  using CStoredArray::Init;
  void Init(api::IArray_uint8* drops) override;
  api::IArray_uint8* GetDropsPerLevel() const override;
};

}  // namespace properties

// What a component's properties say. A required one that is not there raises `CException_General`.
struct PropertyValues {
  static api::EChannel::Enum GetChannel(api::IProperties* properties);
  static api::EComponentRole::Enum GetComponentRole(api::IProperties* properties);
  // Without one, 1 beside a role other than 1, and else 2.
  static api::EDeltaRange::Enum GetDeltaRange(api::IProperties* properties);
  // Without a new reference.
  static api::IArray_uint8* GetDropsPerLevel(api::IProperties* properties);
  static int GetDropVolumeOffset(api::IProperties* properties);
  static unsigned int GetLevelCount(api::IProperties* properties);
  static api::ELossyCompressionLevel::Enum GetLossyCompressionLevel(api::IProperties* properties);
  static api::ENodeCount::Enum GetNodeCount(api::IProperties* properties);
  // A count out of [1..17] raises `CException_Parameter_Invalid` and changes nothing.
  static void SetNodeCount(api::IProperties* properties, api::ENodeCount::Enum count);
  static unsigned int GetNominalDropVolume(api::IProperties* properties);
  static api::EResolution::Enum GetResolution(api::IProperties* properties);
};

class CPropertiesHelper : public common::core::CPropertiesHelper<Configuration>,
                          public virtual api::IPropertiesHelper {
 public:
  CPropertiesHelper();
  ~CPropertiesHelper() override;
  api::EComponentRole::Enum GetComponentRole(api::IProperties* properties) const override;
  api::EDeltaRange::Enum GetDeltaRange(api::IProperties* properties) const override;
  api::IArray_uint8* GetDropsPerLevel(api::IProperties* properties) const override;
  int GetDropVolumeOffset(api::IProperties* properties) const override;
  unsigned int GetLevelCount(api::IProperties* properties) const override;
  api::ELossyCompressionLevel::Enum GetLossyCompressionLevel(
      api::IProperties* properties) const override;
  api::ENodeCount::Enum GetNodeCount(api::IProperties* properties) const override;
  void SetNodeCount(api::IProperties* properties, api::ENodeCount::Enum count) const override;
  unsigned int GetNominalDropVolume(api::IProperties* properties) const override;
  api::EResolution::Enum GetResolution(api::IProperties* properties) const override;
};

}  // namespace velora::v1::wisp::core

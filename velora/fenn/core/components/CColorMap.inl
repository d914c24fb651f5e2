// Bodies of CColorMap.h, for the file that instantiates them.
#pragma once

#include <string.h>

#include "velora/common/core/CStoredBytes.inl"
#include "velora/fenn/core/components/CColorMap.h"

namespace velora::v2::fenn::core::components {

template <int kOperatorType, int kPlanes>
Operators* CColorMap::COperator::CBuild<kOperatorType, kPlanes>::Resolve(Operators* operators,
                                                                         IProperties* properties,
                                                                         IVeltune* veltune) {
  // One, three or four planes; at most what ITableData allows for a colour map.
  constexpr unsigned int kSize = kPlanes * VELORA_SIZE_PLANE;
  unsigned char* volatile table = nullptr;
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    IArray_uint8* planes[kPlanes];  // in the order of the table: taken from the recipe's end
    for (int i = kPlanes - 1; i >= 0; --i) {
      auto* channelMap =
          common::core::ResolveOperand<Configuration, CChannelMap>(frame, operators, veltune);
      planes[i] = channelMap->GetChannelMapData()->GetArray_uint8_Reconstructed_CXF();
    }
    // A plane's array is longer than a plane; what lies behind it is left out.
    for (IArray_uint8* plane : planes) {
      if (plane->GetCount() < VELORA_SIZE_PLANE) {
        PLINTH_RAISE(CException_General);
      }
    }
    // Freed below as long as no data owns it.
    table = new (plinth::v1::api::Slots<Configuration>().platform, true, true) unsigned char[kSize];
    for (int i = 0; i < kPlanes; ++i) {
      memcpy(table + i * VELORA_SIZE_PLANE, planes[i]->GetElements(), VELORA_SIZE_PLANE);
    }
    this->data.Take(Create<Configuration, CColorMapData>());
    this->data->Init(kSize, table, true);
    table = nullptr;
    this->Call_Callback_Resolve_Done();
  }
  // After a raise and after success alike; null by then if the data took it.
  PLINTH_TAIL {
    operator delete[](table, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v2::fenn::core::components

// Four inks in the caller's record of 39728 bytes: a description and 4913 nodes of 16 bits for
// each.
#include "velora/wisp/core/components/CColorMap.h"

#include "velora/wisp/core/components/CChannelMap.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::v1::wisp::core::components {

namespace {

// Cut to 16 bits, in blocks of a size that a compiler can turn into few instructions.
void FillPlane(const int* nodes, uint16_t* plane) {
  constexpr int kBlock = 16;
  int node = 0;
  for (; node + kBlock <= kCube; node += kBlock) {
    for (int i = 0; i < kBlock; ++i) {
      plane[node + i] = static_cast<uint16_t>(nodes[node + i]);
    }
  }
  for (; node < kCube; ++node) {
    plane[node] = static_cast<uint16_t>(nodes[node]);
  }
}

}  // namespace

using CBuild_CMYK = CColorMap::COperator::CBuild_CMYK;

CBuild_CMYK::CBuild_CMYK() = default;

Operators* CBuild_CMYK::Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) {
  unsigned char* volatile bytes = nullptr;
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    api::IChannelMapData* channels[VELORA_WISP_CHANNELS];
    for (int i = VELORA_WISP_CHANNELS - 1; i >= 0; --i) {  // taken from the recipe's end
      channels[i] =
          common::core::ResolveOperand<Configuration, CChannelMap>(frame, operators, veltune)
              ->GetChannelMapData();
    }
    // Ahead of the allocation: a channel's data may have any count of nodes, and FillPlane reads
    // 4913.
    for (api::IChannelMapData* channel : channels) {
      if (channel->GetArray_int32_Nodes()->GetCount() != kCube) {
        PLINTH_RAISE(CException_General);
      }
    }
    // Zeroed, so the bytes without a meaning are 0; freed below as long as no data owns it.
    bytes = new (plinth::v1::api::Slots<Configuration>().platform, true,
                 true) unsigned char[VELORA_SIZE_WISP_COLOR_MAP];
    auto* record = reinterpret_cast<WISPColorMap*>(bytes);
    // Constants of the record.
    record->payloadLength = 20000;
    record->tenThousand = 10000;
    record->four = 4;
    record->sixteen = 16;
    record->one = 1;
    for (int i = 0; i < VELORA_WISP_CHANNELS; ++i) {
      record->channels[i] = *channels[i]->GetWISPColorMapChannel();
      FillPlane(channels[i]->GetArray_int32_Nodes()->GetElements(), record->data.nodes[i]);
    }
    this->data.Take(Create<Configuration, CColorMapData>());
    this->data->Init(VELORA_SIZE_WISP_COLOR_MAP, bytes, true);
    bytes = nullptr;
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_TAIL {
    operator delete[](bytes, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v1::wisp::core::components

// 17 stored nodes for each of four inks, in the caller's record: node by node, its four inks
// together.
#include "velora/wisp/core/components/CAlternateNeutral.h"

#include "velora/wisp/core/components/CNodes.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::v1::wisp::core::components {

using CBuild_Monolithic = CAlternateNeutralChannel::COperator::CBuild_Monolithic;

CBuild_Monolithic::CBuild_Monolithic() = default;

void CBuild_Monolithic::Init(IProperties* newProperties, IArray_int32* nodes) {
  InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (nodes == nullptr || nodes->GetCount() != kNeutrals) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    InitBytes(newProperties, Defer(frame, BytesForm::Encode(newProperties, nodes)));
  });
}

IArray_uint8* CBuild_Monolithic::GetArray_uint8_Nodes_Encoded() const { return GetBytes(); }

Operators* CBuild_Monolithic::Resolve(Operators* operators, IProperties* newProperties,
                                      IVeltune* veltune) {
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, newProperties, veltune);
    if (PropertyValues::GetNodeCount(newProperties) != kNeutrals) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    IArray_uint8* encoded = GetBytes();
    if (encoded->GetCount() < kNeutrals) {
      PLINTH_RAISE(CException_General);
    }
    IArray_int32* nodes = Defer(frame, BytesForm::Decode(newProperties, encoded));
    // A longer string is accepted; what lies behind its 17 nodes is not looked at.
    nodes->Truncate(kNeutrals);
    // Zeroed: what the properties do not fill stays 0.
    WISPColorMapChannel channel = {};
    FillChannel(newProperties, &channel);
    this->data.Take(Create<Configuration, CAlternateNeutralChannelData>());
    this->data->Init(&channel, nodes);
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_END
  return operators;
}

using CBuild_CMYK = CAlternateNeutral::COperator::CBuild_CMYK;

CBuild_CMYK::CBuild_CMYK() = default;

Operators* CBuild_CMYK::Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) {
  unsigned char* volatile bytes = nullptr;
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    api::IAlternateNeutralChannelData* channels[VELORA_WISP_CHANNELS];
    for (int i = VELORA_WISP_CHANNELS - 1; i >= 0; --i) {  // taken from the recipe's end
      channels[i] = common::core::ResolveOperand<Configuration, CAlternateNeutralChannel>(
                        frame, operators, veltune)
                        ->GetAlternateNeutralChannelData();
    }
    // Ahead of the allocation: a channel's data may have any count of nodes.
    for (api::IAlternateNeutralChannelData* channel : channels) {
      if (channel->GetArray_int32_Nodes()->GetCount() != kNeutrals) {
        PLINTH_RAISE(CException_General);
      }
    }
    // Zeroed, so the bytes without a meaning are 0; freed below as long as no data owns it.
    bytes = new (plinth::v1::api::Slots<Configuration>().platform, true,
                 true) unsigned char[sizeof(WISPAlternateNeutral)];
    auto* record = reinterpret_cast<WISPAlternateNeutral*>(bytes);
    record->channelCount = VELORA_WISP_CHANNELS;
    record->nodeCount = kNeutrals;
    for (int i = 0; i < VELORA_WISP_CHANNELS; ++i) {
      record->channels[i] = *channels[i]->GetWISPColorMapChannel();
      const int* nodes = channels[i]->GetArray_int32_Nodes()->GetElements();
      for (int node = 0; node < kNeutrals; ++node) {
        // The inks run fastest: the four values of a node lie together.
        record->nodes[node * VELORA_WISP_CHANNELS + i] = static_cast<uint16_t>(nodes[node]);
      }
    }
    this->data.Take(Create<Configuration, CAlternateNeutralData>());
    this->data->Init(sizeof(WISPAlternateNeutral), bytes, true);
    bytes = nullptr;
    this->Call_Callback_Resolve_Done();
  }
  // After a raise and after success alike; null by then if the data took it.
  PLINTH_TAIL {
    operator delete[](bytes, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v1::wisp::core::components

// The seven packets and the operator that stores their bytes.
// Room: velora/fenn. Errors: see bases.h.
#pragma once

#include "velora/fenn/core/components/bases.h"

namespace velora::v2::fenn::core::components {

// A leaf of a recipe: it takes no operand, and its bytes are what the packet keeps.
template <class Packet>
class CFromDataOf
    : public common::core::CStoredBytes<Configuration, typename Packet::IOperator::IFromData,
                                        Packet::kFromDataType> {
 public:
  using Base = common::core::CStoredBytes<Configuration, typename Packet::IOperator::IFromData,
                                          Packet::kFromDataType>;
  PLINTH_INLINE_CONSTRUCTION(CFromDataOf);
  using Base::Init;
  void Init(IProperties* properties, IArray_uint8* array) override;
  IArray_uint8* GetArray_uint8_Packet() const override;
  void* TakeData() override;
};

// The one packet that can be made from a value.
class CFromData_DeltaScalar : public CFromDataOf<api::IPacket_DeltaScalar> {
 public:
  using CFromDataOf::Init;
  void Init(IProperties* properties, unsigned char scalar) override;
};

// The seven packets are one template; their interfaces distinguish them.
template <class Interface>
class CPacket : public CBuilt<CPacket<Interface>, Interface> {
 public:
  struct COperator {
    using CFromData = std::conditional_t<std::is_same_v<Interface, api::IPacket_DeltaScalar>,
                                         CFromData_DeltaScalar, CFromDataOf<Interface>>;
  };
  using Leaf = typename COperator::CFromData;
};

using CPacket_ColorDCT = CPacket<api::IPacket_ColorDCT>;
using CPacket_ColorResidue = CPacket<api::IPacket_ColorResidue>;
using CPacket_MonoDCT = CPacket<api::IPacket_MonoDCT>;
using CPacket_MonoResidue = CPacket<api::IPacket_MonoResidue>;
using CPacket_MonoCBAT = CPacket<api::IPacket_MonoCBAT>;
using CPacket_DeltaScalar = CPacket<api::IPacket_DeltaScalar>;
using CPacket_Blob = CPacket<api::IPacket_Blob>;

}  // namespace velora::v2::fenn::core::components

// Bodies of the operator in CNodes.h, for the file that instantiates them.
#pragma once

#include "velora/common/core/CStoredBytes.inl"
#include "velora/wisp/core/components/CNodes.h"

namespace velora::v1::wisp::core::components {

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IArray_uint8* encoded) {
  this->InitBytes(nullptr, encoded);
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IProperties* newProperties,
                                                   IArray_int32* nodes) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (newProperties == nullptr || nodes == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    IArray_int32* taken = Defer(frame, Form::Take(newProperties, nodes));
    plinth::v1::core::CObject::Init();
    this->properties.Share(newProperties);
    UpdateArray_uint8_Nodes_Encoded(taken);
  });
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(int type, api::ISerializer* serializer,
                                                   void* context) {
  Base::Init(type, serializer, context);
  // Deltas alone are read by them: node count and delta range are not in their bytes.
  if constexpr (Form::kReadsProperties) {
    this->properties.Share(static_cast<IProperties*>(context));
  }
}

template <class Interface>
IArray_int32* CNodes<Interface>::COperator::CFromData::BuildArray_int32_Nodes_Decoded() {
  return Form::Decode(this->properties.Get(), this->GetBytes());
}

template <class Interface>
IArray_uint8* CNodes<Interface>::COperator::CFromData::GetArray_uint8_Nodes_Encoded() const {
  return this->GetBytes();
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::UpdateArray_uint8_Nodes_Encoded(IArray_int32* nodes) {
  plinth::v1::core::CObject::CheckThis();
  // Ahead of all that can raise: a failed call leaves no bytes, and the object is refused until it
  // gets some. So the test above is the base's, which does not ask for bytes.
  this->bytes.Drop();
  if (nodes == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->bytes.Take(Form::Encode(this->properties.Get(), nodes));
}

// Decoded anew in each build: the operator keeps the bytes, the component the nodes.
template <class Interface>
void* CNodes<Interface>::COperator::CFromData::TakeData() {
  return BuildArray_int32_Nodes_Decoded();
}

}  // namespace velora::v1::wisp::core::components

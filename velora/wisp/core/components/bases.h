// The bases of the ink components and of their recipe operators.
// Room: velora/wisp. A component is the common build protocol over its kind; an operator makes the
// data that its component keeps, over the bare arithmetic of pyramid.h and delta_code.h. `Build...`
// of an array gives a reference to the caller. Failures are raised: a null argument and an array of
// the wrong size `CException_Parameter_Invalid`; a wrong recipe and an operator without its
// properties `CException_This_Invalid`; parts of the wrong size, and values that cannot be encoded,
// `CException_General`.
#pragma once

#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/wisp/api/IVeltune.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core::components {

using api::IArray_int32;
using api::IArray_uint8;
using api::IProperties;
using api::IVeltune;
using Operators = common::core::CRecipe<Configuration>::Operators;
using plinth::v1::core::CArray_int32;
using plinth::v1::core::CArray_uint8;

// A component of a kind, as the concrete class that the build protocol needs.
template <class Class, class Interface>
using CBuilt = common::core::CBuilt<Configuration, Class, Interface>;

// An operator that makes data from operands, and one that stores bytes.
template <class Interface, int kType>
using CBareProducer = common::core::CBareProducer<Configuration, Interface, kType>;
template <class Interface, int kType>
using CStoringProducer = common::core::CStoringProducer<Configuration, Interface, kType>;

}  // namespace velora::v1::wisp::core::components

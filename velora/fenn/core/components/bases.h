// The bases of the toner components and of their recipe operators.
// Room: velora/fenn. A component is the common build protocol over its kind; an operator makes the
// data that its component keeps. Failures are raised: a null argument
// `CException_Parameter_Invalid`, a wrong recipe `CException_This_Invalid`, a stream that does not
// decode or a missing reference `CException_General`.
#pragma once

#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/fenn/api/IVeltune.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core::components {

using api::IArray_uint8;
using api::IProperties;
using api::IVeltune;
using Operators = common::core::CRecipe<Configuration>::Operators;

// A component of a kind, as the concrete class that the build protocol needs.
template <class Class, class Interface>
using CBuilt = common::core::CBuilt<Configuration, Class, Interface>;
// An operator that makes data from operands, and one that stores bytes.
template <class Interface, int kType>
using CBareProducer = common::core::CBareProducer<Configuration, Interface, kType>;
template <class Interface, int kType>
using CStoringProducer = common::core::CStoringProducer<Configuration, Interface, kType>;

}  // namespace velora::v2::fenn::core::components

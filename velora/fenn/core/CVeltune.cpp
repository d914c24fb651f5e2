// A table: the print mode's tags and the role make a reference component, the lookup finds the one
// that fits, that builds its data, and the data goes to the caller's buffer in one copy. Until that
// copy every failure leaves the buffer as it was.
#include "velora/fenn/core/CVeltune.h"

#include <string.h>

#include "velora/fenn/core/CPrintModeParameters.h"
#include "velora/fenn/core/CVelcase.h"
#include "velora/fenn/core/components/CChannelMap.h"
#include "velora/fenn/core/components/CColorMap.h"
#include "velora/fenn/core/components/CGrayCurve.h"
#include "velora/fenn/core/components/CPacket.h"
#include "velora/fenn/core/properties.h"
#include "velora/fenn/core/tags.h"

namespace velora::v2::fenn::core {

CVeltune::CVeltune() : rawData(nullptr), processing(nullptr) {}

CVeltune::~CVeltune() = default;

void CVeltune::Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
                    api::IArray<api::IVelcase>* newVelcases, api::IPrintModeMappings* mappings,
                    ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                    ctr_axis_type axis, RawData* newRawData, CT_PROCESSING* newProcessing) {
  InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (newVelcases == nullptr || newRawData == nullptr || newProcessing == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    api::IPrintModeParameters* parameters =
        Defer<api::IPrintModeParameters>(frame, Create<Configuration, CPrintModeParameters>());
    parameters->Init(platform, productVariant, mappings, newVelcases, table, theme, media, axis);
    // Ahead of the members: it ends the object's old life.
    Base::Init(parameters);
    velcases.Share(newVelcases);
    processing = newProcessing;
    rawData = newRawData;
    // Last, since it takes longest: a refused argument costs no merge.
    combined.Take(Init_BuildVelcase_Combined<CVelcase>(newVelcases));
  });
}

void CVeltune::Init(api::IVeltune* other) {
  InitGuarded([&](volatile plinth::v1::api::Frame&) {
    Base::Init(other);
    velcases.Share(other->GetArray_Velcases());
    rawData = other->GetRawData();
    processing = other->GetCT_PROCESSING();
    combined.Share(other->GetVelcase_Combined());
  });
}

void CVeltune::Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis, RawData* newRawData, CT_PROCESSING* newProcessing) {
  CheckThis();
  // First, since it alone can raise.
  GetPrintModeParameters()->Update(table, theme, media, axis);
  rawData = newRawData;
  processing = newProcessing;
}

bool CVeltune::IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis, RawData* otherRawData,
                          CT_PROCESSING* otherProcessing) const {
  CheckThis();
  return GetPrintModeParameters()->IsUpToDate(table, theme, media, axis) &&
         processing == otherProcessing && rawData == otherRawData;
}

// ---- the key of a request

namespace {

// A tag of a class with a value: the array's from the moment it exists, so it needs no frame.
template <class Class>
void AddTag(api::IArray<api::ITag>* array, int index, int value) {
  Class* tag = Create<Configuration, Class>();
  array->GetElements()[index] = tag;
  tag->Init(static_cast<typename Class::Enum>(value));
}

// From the caller's numbering to the pack's; what the mappings do not hold becomes 0, which no tag
// accepts.
int InPack(unsigned int value, unsigned int highest) {
  return value <= highest ? static_cast<int>(value) + 1 : 0;
}

}  // namespace

api::ITags* CVeltune::BuildTags_ForLocator(api::IPrintModeParameters* parameters) {
  using Mappings = api::IPrintModeMappings;
  api::ITags* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (parameters == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    const api::IPrintModeMapping* mapping = parameters->GetPrintModeMapping();
    api::IArray<api::ITag>* array = Defer<api::IArray<api::ITag>>(
        frame, Create<Configuration, plinth::v1::core::CArray<Configuration, api::ITag>>());
    array->Init(common::TypeIds<Configuration>::kArray_Tag, 6);
    AddTag<common::core::tags::CPlatform<Configuration>>(array, 0, parameters->GetPlatform());
    // The printer's pack has the family; without one this raises `CException_This_Invalid`.
    AddTag<common::core::tags::CSupplyFamily<Configuration>>(array, 1,
                                                             parameters->GetSupplyFamily());
    AddTag<tags::CTableType>(array, 2, InPack(mapping->GetTableType(), Mappings::kTables - 1));
    AddTag<tags::CThemeType>(array, 3, InPack(mapping->GetThemeType(), Mappings::kThemes - 1));
    AddTag<tags::CMediaType>(array, 4, InPack(mapping->GetMediaType(), Mappings::kMedia - 1));
    AddTag<tags::CAxisType>(array, 5, InPack(mapping->GetAxisType(), Mappings::kAxes - 1));
    api::ITags* tags =
        Defer<api::ITags>(frame, Create<Configuration, common::core::CTags<Configuration>>());
    tags->Init(array);
    result = HandOver(frame, tags);
  }
  PLINTH_END
  return result;
}

api::IProperties* CVeltune::BuildProperties_ForLocator(api::IPrintModeParameters* parameters) {
  constexpr auto kRole = static_cast<api::EComponentRole::Enum>(1);
  api::IProperties* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (parameters == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    auto* role = Defer(frame, Create<Configuration, properties::CComponentRole>());
    role->Init(kRole);
    api::IArray<api::IProperty>* array = Defer<api::IArray<api::IProperty>>(
        frame, Create<Configuration, plinth::v1::core::CArray<Configuration, api::IProperty>>());
    array->Init(common::TypeIds<Configuration>::kArray_Property, 1);
    array->Set(0, role);
    api::IProperties* built = Defer<api::IProperties>(
        frame, Create<Configuration, common::core::CProperties<Configuration>>());
    built->Init(array);
    result = HandOver(frame, built);
  }
  PLINTH_END
  return result;
}

// ---- the tables

template <class Class>
typename Class::Data* CVeltune::BuildFitting() {
  typename Class::Data* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    CheckThis();
    api::ITags* tags = Defer(frame, BuildTags_ForLocator(GetPrintModeParameters()));
    api::IProperties* role = Defer(frame, BuildProperties_ForLocator(GetPrintModeParameters()));
    Class* reference = Defer(frame, Create<Configuration, Class>());
    common::core::CComponent<Configuration>* component = reference;
    component->Init(tags, role);
    // The locators are overloads of the interface, one for each kind.
    api::IVeltune* locator = this;
    auto* found = Defer(frame, locator->Locate(reference));
    result = found->BuildData(this);
  }
  PLINTH_END
  return result;
}

template <class Class>
void CVeltune::Reconstruct(unsigned int smallest, bool exact, unsigned int cb, unsigned char* ab) {
  PLINTH_FRAME(Configuration) {
    if (cb < smallest || ab == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    auto* data = Defer(frame, BuildFitting<Class>());
    const unsigned int size = data->GetSize_ReconstructedData();
    // The pack decides how large its table is, so this is known only after the build.
    if (exact ? cb != size : cb > size) {
      PLINTH_RAISE(CException_General);
    }
    memcpy(ab, data->GetReconstructedData(), cb);
  }
  PLINTH_END
}

void CVeltune::ReconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab) {
  Reconstruct<components::CColorMap>(VELORA_SIZE_RGB_TO_CMYK, true, cb, ab);
}

// The one table that may be larger than the buffer.
void CVeltune::ReconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab) {
  Reconstruct<components::CColorMap>(VELORA_SIZE_RGB_TO_RGB, false, cb, ab);
}

void CVeltune::ReconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab) {
  Reconstruct<components::CColorMap>(VELORA_SIZE_PLANE, true, cb, ab);
}

void CVeltune::ReconstructGrayCurve(unsigned int cb, unsigned char* ab) {
  Reconstruct<components::CGrayCurve>(VELORA_SIZE_GRAY_CURVE, true, cb, ab);
}

api::IArray_uint8* CVeltune::ReconstructFuserBlob() {
  return BuildFitting<components::CPacket_Blob>();
}

// ---- accessors and locators

api::IArray<api::IVelcase>* CVeltune::GetArray_Velcases() const {
  CheckThis();
  return velcases.Get();
}

RawData* CVeltune::GetRawData() const {
  CheckThis();
  return rawData;
}

CT_PROCESSING* CVeltune::GetCT_PROCESSING() const {
  CheckThis();
  return processing;
}

api::IVelcase* CVeltune::GetVelcase_Combined() const {
  CheckThis();
  return combined.Get();
}

api::IPrintModeMapping* CVeltune::GetPrintModeMapping(api::IPrintModeParameters* parameters) const {
  CheckThis();
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return parameters->GetPrintModeMapping();
}

#define FENN_LOCATOR(Name, List)                                                            \
  api::I##Name* CVeltune::Locate##Name(api::I##Name* reference) {                           \
    return Base::Locate<components::C##Name>(reference, GetVelcase_Combined()->Get##List(), \
                                             GetPrintModeParameters());                     \
  }
FENN_KINDS(FENN_LOCATOR)
#undef FENN_LOCATOR

void CVeltune::CheckThis() const { CheckMembers(); }

void CVeltune::CheckMembers() const {
  Base::CheckMembers();
  if (!velcases || rawData == nullptr || processing == nullptr || !combined) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CVeltune::Reset() {
  Base::Reset();
  velcases.Forget();
  rawData = nullptr;
  processing = nullptr;
  combined.Forget();
}

void CVeltune::Delete() {
  velcases.Drop();
  combined.Drop();
  Base::Delete();
}

}  // namespace velora::v2::fenn::core

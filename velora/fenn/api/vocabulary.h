// The toner pipeline's words: print-mode enumerations, tags, conditions, properties, mappings.
// Room: velora/fenn. Values from an image are not range-checked, values from code are:
// `CException_Parameter_Invalid`.
//
// Print-mode values come in two numberings. The caller's, the ctr_* enumerations, index the mapping
// table. The pack's, the enumerations below, are stored in tags and conditions.
#pragma once

#include "velora/common/api/IFactory.h"
#include "velora/fenn/api/Vocabulary.h"
#include "velora/velora.h"

namespace velora::v2::fenn::api {

// The common names, for this pipeline's layer.
using common::api::IArray;
using common::api::IArray_int32;
using common::api::IArray_uint8;
using common::api::ILinkedList;
using common::api::ISerializer;
using common::api::ISerializerHelper;
using EPlatform = common::api::EPlatform<Configuration>;
using ESupplyFamily = common::api::ESupplyFamily<Configuration>;
using EProductVariant = common::api::EProductVariant<Configuration>;
using EVelcaseSchema = common::api::EVelcaseSchema<Configuration>;
using EVelcaseVersion = common::api::EVelcaseVersion<Configuration>;
using EChannel = common::api::EChannel<Configuration>;
using ITag = common::api::ITag<Configuration>;
using ITags = common::api::ITags<Configuration>;
using IProperty = common::api::IProperty<Configuration>;
using IProperties = common::api::IProperties<Configuration>;
using IConditions = common::api::IConditions<Configuration>;
using IRecipe = common::api::IRecipe<Configuration>;
using IComponent = common::api::IComponent<Configuration>;
using TypeIds = common::TypeIds<Configuration>;

// An enumeration of the toner pipeline alone.
#define FENN_ENUMERATION(Name, ...) \
  struct Name {                     \
    VELORA_ENUM({__VA_ARGS__})      \
  };
FENN_ENUMERATION(ETableType, 1, 3, 1)
FENN_ENUMERATION(EThemeType, 1, 11, 1)
FENN_ENUMERATION(EMediaType, 1, 4, 127)
FENN_ENUMERATION(EAxisType, 1, 3, 127)
FENN_ENUMERATION(EComponentRole, 1, 2, 1)
FENN_ENUMERATION(EDimensionality, 1, 7, 1)
#undef FENN_ENUMERATION

// The classes of print mode, each a tag and a condition.
#define FENN_PRINT_MODE(X) X(TableType) X(ThemeType) X(MediaType) X(AxisType)

namespace tags {
#define FENN_TAG(Name) VELORA_VALUE_INTERFACE(Name, ITag, E##Name)
FENN_PRINT_MODE(FENN_TAG)
#undef FENN_TAG
}  // namespace tags

namespace conditions::print_mode {
#define FENN_CONDITION(Name) VELORA_VALUE_INTERFACE(Name, IConditions::IOperator, E##Name)
FENN_PRINT_MODE(FENN_CONDITION)
#undef FENN_CONDITION
}  // namespace conditions::print_mode

namespace properties {
VELORA_VALUE_INTERFACE(ComponentRole, IProperty, EComponentRole)
VELORA_VALUE_INTERFACE(Dimensionality, IProperty, EDimensionality)
}  // namespace properties

// One print mode in the caller's numbering: a canonical object, whose identity is the print mode.
class IPrintModeMapping {
 public:
  virtual void Init(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                    ctr_axis_type axis) = 0;
  virtual ~IPrintModeMapping();
  // Raise `CException_This_Invalid` before Init.
  virtual ctr_table_type GetTableType() const = 0;
  virtual ctr_theme_type GetThemeType() const = 0;
  virtual ctr_media_type GetMediaType() const = 0;
  virtual ctr_axis_type GetAxisType() const = 0;
};

// The table of all print modes. Owns its 396 mappings, which outlive whatever points to them only
// as long as the table does.
class IPrintModeMappings {
 public:
  static constexpr int kTables = 3;
  static constexpr int kThemes = 11;
  static constexpr int kMedia = 4;
  static constexpr int kAxes = 3;
  static constexpr int kCount = kTables * kThemes * kMedia * kAxes;

  virtual void Init() = 0;
  virtual ~IPrintModeMappings();
  // A value out of range raises `CException_Parameter_Invalid`, a blank table
  // `CException_This_Invalid`.
  virtual IPrintModeMapping* GetPrintModeMapping(ctr_table_type table, ctr_theme_type theme,
                                                 ctr_media_type media,
                                                 ctr_axis_type axis) const = 0;
  virtual void Delete() = 0;

  // Ends the table and frees it.
  virtual void Destroy() = 0;
};

// Points into the mappings, which it does not own.
class IPrintModeParameters : public virtual common::api::IPrintModeParameters<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPrintModeParameters);
  using common::api::IPrintModeParameters<Configuration>::Init;
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, IArray<IVelcase>* velcases, ctr_table_type table,
                    ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis) = 0;
  void Init(IPrintModeParameters* other) override = 0;
  virtual void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis) = 0;
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  virtual bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis) const = 0;
};

class IPropertiesHelper : public virtual common::api::IPropertiesHelper<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  virtual EComponentRole::Enum GetComponentRole(IProperties* properties) const = 0;
  virtual EDimensionality::Enum GetDimensionality(IProperties* properties) const = 0;
  // 1, 2, 3 for cyan, magenta, yellow; 0 for every other channel.
  virtual int GetColorIndex(IProperties* properties) const = 0;
  // 'K', 'C', 'M', 'Y'; 'U' for every other channel.
  virtual char GetColorChar(IProperties* properties) const = 0;
};

}  // namespace velora::v2::fenn::api

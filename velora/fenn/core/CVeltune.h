// One table request inside the object world.
// Room: velora/fenn. Holds one reference each on parameters, packs and combined pack; RawData and
// CT_PROCESSING are the caller's. Errors: see its interface; packs of different supply
// families, or none, `CException_This_Invalid`.
#pragma once

#include "velora/common/core/CVeltune.h"
#include "velora/fenn/api/IVeltune.h"

namespace velora::v2::fenn::core {

using api::Configuration;

class CVeltune : public common::core::CVeltune<Configuration>, public virtual api::IVeltune {
 public:
  using Base = common::core::CVeltune<Configuration>;

  CVeltune();
  ~CVeltune() override;
  using Base::Init;
  void Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
            api::IArray<api::IVelcase>* velcases, api::IPrintModeMappings* mappings,
            ctr_table_type table, ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis,
            RawData* rawData, CT_PROCESSING* processing) override;
  void Init(api::IVeltune* other) override;
  void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis,
              RawData* rawData, CT_PROCESSING* processing) override;
  void ReconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab) override;
  void ReconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab) override;
  void ReconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab) override;
  void ReconstructGrayCurve(unsigned int cb, unsigned char* ab) override;
  api::IArray_uint8* ReconstructFuserBlob() override;
  api::IArray<api::IVelcase>* GetArray_Velcases() const override;
  RawData* GetRawData() const override;
  CT_PROCESSING* GetCT_PROCESSING() const override;
  api::IVelcase* GetVelcase_Combined() const override;
  bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                  ctr_axis_type axis, RawData* rawData, CT_PROCESSING* processing) const override;
  api::IPrintModeMapping* GetPrintModeMapping(api::IPrintModeParameters* parameters) const override;
#define FENN_LOCATOR(Name, List) api::I##Name* Locate##Name(api::I##Name* reference) override;
  FENN_KINDS(FENN_LOCATOR)
#undef FENN_LOCATOR
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // The key of a request, for the print mode of the parameters; the caller owns the result. A
  // component carries its tags and the role 1.
  static api::ITags* BuildTags_ForLocator(api::IPrintModeParameters* parameters);
  static api::IProperties* BuildProperties_ForLocator(api::IPrintModeParameters* parameters);

 protected:
  void CheckMembers() const;

 private:
  // Finds the component of a class that fits the print mode and has it build its data, for the
  // caller to own.
  template <class Class>
  typename Class::Data* BuildFitting();
  // Builds and copies a table, if the size test lets it.
  template <class Class>
  void Reconstruct(unsigned int smallest, bool exact, unsigned int cb, unsigned char* ab);

  // The packs as they were given; the parameters share the same array.
  plinth::v1::core::Counted<api::IArray<api::IVelcase>> velcases;
  // The caller's, and never null in a sound object.
  RawData* rawData;
  CT_PROCESSING* processing;
  // All packs in one, sorted: what every lookup searches.
  plinth::v1::core::Counted<api::IVelcase> combined;
};

}  // namespace velora::v2::fenn::core

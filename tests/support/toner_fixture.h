// The toner pipeline's fixture: components, packs, and a lookup over the records of a caller.
// Room: tests. Owns what PipelineTest owns, and the caller's records.
#pragma once

#include "tests/support/pipeline_fixture.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/RawData.h"

namespace velora_test {

namespace fenn = velora::v2::fenn::api;

struct TonerPipeline {
  using Configuration = fenn::Configuration;
  using Factory = fenn::_factory::IFactory;
  static constexpr auto CreateFactory = &_velora_v2_CreateFactory_Posix_Lib;
  static constexpr const char* kTags = "48=1";
  static constexpr const char* kProperties = "35=1";
};

extern template class PipelineTest<TonerPipeline>;

class TonerTest : public PipelineTest<TonerPipeline> {
 protected:
  ISerializeable* Word(int type, int value) override;
  // A packet's operator with its bytes; [93..99].
  Operator* Bytes(int type, const Image& bytes);
  fenn::IVelcase* Pack(int channel, Elements<IComponent*> components, int family = 0);
  // Over `rawData` and `processing`, for the printer and the print mode below.
  fenn::IVeltune* Veltune(Elements<IVelcase*> packs);

  int platform = 1;
  int productVariant = 0;
  int table = CTR_TABLE_CMYK;
  int theme = CTR_THEME_0;
  int media = CTR_MEDIA_P;
  int axis = CTR_AXIS_P;
  RawData rawData{'P', 'P'};
  CT_PROCESSING processing = {};
};

}  // namespace velora_test

// The ink pipeline's fixture: components, packs, and a lookup for a printer and a print mode.
// Room: tests. Owns what PipelineTest owns. The drops of each level are a count, "35=4" means
// 1, 2, 3, 4.
#pragma once

#include "tests/support/pipeline_fixture.h"
#include "velora/velora.h"
#include "velora/wisp/api/IFactory.h"

namespace velora_test {

namespace wisp = velora::v1::wisp::api;

using Nodes = std::vector<int>;

struct InkPipeline {
  using Configuration = wisp::Configuration;
  using Factory = wisp::_factory::IFactory;
  static constexpr auto CreateFactory = &_velora_v1_CreateFactory_Posix_Lib;
  static constexpr const char* kTags = "50=1";
  static constexpr const char* kProperties = "33=1";
};

extern template class PipelineTest<InkPipeline>;

class InkTest : public PipelineTest<InkPipeline> {
 protected:
  using PipelineTest::Array;
  using PipelineTest::Content;

  ISerializeable* Word(int type, int value) override;
  IArray_int32* Array(const Nodes& nodes);
  static Nodes Content(IArray_int32* array);
  // An operator with stored bytes, [86..89], 92, 93 or 94, as it comes out of an image with these
  // properties for its context.
  Operator* Bytes(int type, const Image& bytes, IProperties* properties = nullptr);
  // A table that takes parts of a type, one for each of the inks, and gathers them by an operator.
  wisp::IComponent* Gathered(int type, const Profile& profile, int part, Elements<int> inks,
                             int gatherer);
  // The string of a channel map whose nodes all have a value.
  static Image FlatChannel(int value);
  wisp::IVelcase* Pack(int channel, Elements<IComponent*> components, int family = 0);
  // For the printer and the print mode below.
  wisp::IVeltune* Veltune(Elements<IVelcase*> packs);

  int platform = 1;
  int productVariant = 0;
  tWISPPrintModeMapping mode = {PT_DATA_SOURCE_0, PT_MEDIA_0, PT_QUALITY_0, 0, 1};
};

}  // namespace velora_test

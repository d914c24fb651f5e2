// Device links: a table as an ICC profile from RGB to its own channels.
#include <stdexcept>

#include "authoring/lcms.h"
#include "authoring/table_file.h"

namespace velora::authoring {
namespace {

template <class Object, void (*kFree)(Object*)>
using Owner = std::unique_ptr<Object, std::integral_constant<void (*)(Object*), kFree>>;

void Require(bool good) {
  if (!good) throw std::runtime_error("Little CMS makes no device link");
}

void WriteText(const OpenProfile& profile, cmsTagSignature tag, const char* text) {
  const Owner<cmsMLU, cmsMLUfree> words(cmsMLUalloc(nullptr, 1));
  Require(words != nullptr && cmsMLUsetASCII(words.get(), "en", "US", text) &&
          cmsWriteTag(profile.get(), tag, words.get()));
}

// Curves that change nothing: the 8-bit form of a table is stored with some, and Little CMS writes
// none of its own.
cmsStage* StraightCurves(int channels) {
  const cmsUInt16Number ends[] = {0, 65535};
  const Owner<cmsToneCurve, cmsFreeToneCurve> line(cmsBuildTabulatedToneCurve16(nullptr, 2, ends));
  const std::vector<cmsToneCurve*> curves(static_cast<std::size_t>(channels), line.get());
  return cmsStageAllocToneCurves(nullptr, static_cast<cmsUInt32Number>(channels), curves.data());
}

}  // namespace

Bytes WriteLink(const Bytes& table, bool is_16_bit) {
  const int channels = ChannelsOf(table);
  const OpenProfile profile(cmsCreateProfilePlaceholder(nullptr), cmsCloseProfile);
  Require(profile != nullptr);
  cmsSetProfileVersion(profile.get(), 2.4);
  cmsSetDeviceClass(profile.get(), cmsSigLinkClass);
  cmsSetColorSpace(profile.get(), cmsSigRgbData);
  cmsSetPCS(profile.get(), channels == kChannels ? cmsSigCmykData : cmsSigRgbData);
  cmsSetHeaderRenderingIntent(profile.get(), INTENT_RELATIVE_COLORIMETRIC);

  std::vector<cmsUInt16Number> points;
  for (const unsigned char value : Interleaved(table, channels)) {
    points.push_back(static_cast<cmsUInt16Number>(value * 257));
  }
  const Owner<cmsPipeline, cmsPipelineFree> pipeline(
      cmsPipelineAlloc(nullptr, 3, static_cast<cmsUInt32Number>(channels)));
  Require(pipeline != nullptr);
  for (cmsStage* stage :
       {StraightCurves(3),
        cmsStageAllocCLut16bit(nullptr, kGridPoints, 3, static_cast<cmsUInt32Number>(channels),
                               points.data()),
        StraightCurves(channels)}) {
    Require(cmsPipelineInsertStage(pipeline.get(), cmsAT_END, stage));
  }
  cmsPipelineSetSaveAs8bitsFlag(pipeline.get(), is_16_bit ? FALSE : TRUE);
  WriteText(profile, cmsSigProfileDescriptionTag,
            channels == kChannels ? "RGB to CMYK table" : "RGB to RGB table");
  WriteText(profile, cmsSigCopyrightTag, "No copyright, use freely");
  const Owner<cmsSEQ, cmsFreeProfileSequenceDescription> sequence(
      cmsAllocProfileSequenceDescription(nullptr, 1));
  Require(sequence != nullptr);
  const Owner<cmsMLU, cmsMLUfree> maker(cmsMLUalloc(nullptr, 1));
  cmsMLUsetASCII(maker.get(), "en", "US", "table");
  sequence->seq[0].Manufacturer = cmsMLUdup(maker.get());
  sequence->seq[0].Model = cmsMLUdup(maker.get());
  Require(cmsWriteTag(profile.get(), cmsSigAToB0Tag, pipeline.get()) &&
          cmsWriteTag(profile.get(), cmsSigProfileSequenceDescTag, sequence.get()));

  cmsUInt32Number size = 0;
  Require(cmsSaveProfileToMem(profile.get(), nullptr, &size));
  Bytes file(size);
  Require(cmsSaveProfileToMem(profile.get(), file.data(), &size));
  return file;
}

Bytes ReadLink(const Bytes& file) {
  const OpenProfile profile = Open(file);
  if (cmsGetDeviceClass(profile.get()) != cmsSigLinkClass ||
      cmsGetColorSpace(profile.get()) != cmsSigRgbData) {
    throw std::runtime_error("no device link from RGB; sample an output profile instead");
  }
  const bool is_cmyk = cmsGetPCS(profile.get()) == cmsSigCmykData;
  if (!is_cmyk && cmsGetPCS(profile.get()) != cmsSigRgbData) {
    throw std::runtime_error("the device link leads neither to CMYK nor to RGB");
  }
  const Transform transform =
      MakeTransform({profile}, TYPE_RGB_FLT, is_cmyk ? TYPE_CMYK_FLT : TYPE_RGB_FLT,
                    Intent::kRelative, kExact, "device link");
  return SampleGrid(transform, is_cmyk ? kChannels : kRgbChannels, is_cmyk ? 100 : 1);
}

}  // namespace velora::authoring

// Toner packs through the toner pipeline's objects.
#include "authoring/pack_objects.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/frontend/door/library.h"

namespace velora::authoring {
namespace {

namespace fenn = v2::fenn::api;

struct TonerLayer {
  using Configuration = fenn::Configuration;
  using IFactory = fenn::_factory::IFactory;
  using IVelcase = fenn::IVelcase;
  using IBytesProperty = void;
#define TONER_KIND(Name, List)                                                     \
  , KindRow<fenn::I##Name, &IFactory::Create##Name, &IFactory::CreateArray_##Name, \
            &IFactory::Create##List, &IVelcase::Get##List>
  using Kinds = KindRows<void FENN_KINDS(TONER_KIND)>;
#undef TONER_KIND

  // A caller's record has the size of a pack in 16 bits, which are read with a sign.
  static constexpr int kLargestFile = 32767;

  static bool Open() {
    const bool open = initLibrary(nullptr);
    if (!open) releaseLibrary();
    return open;
  }
  static void Close() { releaseLibrary(); }
  static IFactory* Factory() { return g_pFactory; }

  // Visits what an image can hold: visit(name, type id, operation of the factory).
  template <class Visit>
  static void ForEachStored(Visit visit) {
#define TONER_STORED(Name, Id) visit(#Name, Id, &IFactory::Create##Name);
    VELORA_SHARED_TYPE_IDS(TONER_STORED)
    FENN_TYPE_IDS(TONER_STORED)
#undef TONER_STORED
  }

  static bool StoreBytes(fenn::IPacket::IOperator::IFromData* operation,
                         fenn::IProperties* properties, fenn::IArray_uint8* bytes) {
    operation->Init(properties, bytes);
    return true;
  }
  static bool StoreBytes(fenn::IRecipe::IOperator* operation, fenn::IProperties*,
                         fenn::IArray_uint8* bytes) {
    if (bytes->GetCount() > 0) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    operation->Init();
    return true;
  }
  // No table is authored with these two.
  static bool StoreBytes(fenn::IGrayCurve::IOperator::IBuild_Monolithic*, fenn::IProperties*,
                         fenn::IArray_uint8*) {
    PLINTH_RAISE(raised::CException_NotImplemented);
  }
  static bool StoreBytes(fenn::IChannelMap::IOperator::IBuild_Monolithic*, fenn::IProperties*,
                         fenn::IArray_uint8*) {
    PLINTH_RAISE(raised::CException_NotImplemented);
  }

  static fenn::IArray_uint8* StoredBytes(fenn::IPacket::IOperator::IFromData* operation) {
    return operation->GetArray_uint8_Packet();
  }
  static fenn::IArray_uint8* StoredBytes(
      fenn::IGrayCurve::IOperator::IBuild_Monolithic* operation) {
    return operation->GetArray_uint8_Packet_Encoded();
  }
  static fenn::IArray_uint8* StoredBytes(
      fenn::IChannelMap::IOperator::IBuild_Monolithic* operation) {
    return operation->GetArray_uint8_Packet_Encoded();
  }
  static fenn::IArray_uint8* StoredBytes(fenn::IRecipe::IOperator*) { return nullptr; }

  // What is read from a toner operator hangs on its bytes alone.
  static const Component* FindMisread(const Pack&) { return nullptr; }
};

}  // namespace

const PackPipeline& TonerPipeline() { return PipelineOver<TonerLayer>(); }

}  // namespace velora::authoring

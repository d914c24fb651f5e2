#include "velora/frontend/door/Velora.h"

#include <string.h>

#include "plinth/runtime/api/frame.h"
#include "velora/frontend/door/library.h"
#include "velora/frontend/door/reason.h"
#include "velora/frontend/toolkit/message.h"

namespace {

using namespace plinth::v1::api::_exports::common::exception;
using plinth::v1::api::Defer;
using plinth::v1::api::Frame;
namespace fenn = velora::v2::fenn::api;

}  // namespace

Velora::Velora(void* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
               ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
               ctr_axis_type eAxisType, unsigned int nVelcases, RawData* pRawData,
               CT_PROCESSING* pCT)
    : m_pBootRecord(pBootRecord),
      m_ePlatform(ePlatform),
      m_eSupplyFamily(eSupplyFamily),
      m_eProductVariant(eProductVariant),
      m_eTableType(eTableType),
      m_eThemeType(eThemeType),
      m_eMediaType(eMediaType),
      m_eAxisType(eAxisType),
      m_nVelcases(nVelcases),
      m_pRawData(pRawData),
      m_pCT(pCT) {}

// Harmless behind a method, which has released the library itself.
Velora::~Velora() { releaseLibrary(); }

// What the four table methods differ in.
struct Velora::Table {
  unsigned int smallest;
  void (fenn::IVeltune::*reconstruct)(unsigned int cb, unsigned char* ab);
  const char* function;
  int line;
  velora_reason_number refusal;  // of a buffer's size
};

// A frame in a frame: what the end of the inner one raises is caught by the outer one, which gives
// its reason and prints nothing. The library goes down behind both, so that nothing of a request
// outlives it.
template <class Body, class Refuse>
bool Velora::serve(const char* function, int line, const Body& body, const Refuse& refuseWith) {
  if (!initLibrary(m_pBootRecord)) {
    return false;
  }
  volatile bool done = false;
  PLINTH_FRAME(plinth::v1::api::FrontEndConfiguration) {
    PLINTH_FRAME(plinth::v1::api::FrontEndConfiguration) {
      // A null has had its line and its reason from createVeltune; the raise only leaves the frame.
      const auto makeVeltune = [&] {
        fenn::IVeltune* veltune =
            createVeltune(m_ePlatform, m_eSupplyFamily, m_eProductVariant, m_eTableType,
                          m_eThemeType, m_eMediaType, m_eAxisType, m_nVelcases, m_pRawData, m_pCT);
        if (veltune == nullptr) {
          PLINTH_RAISE(CException_General);
        }
        return Defer(frame, veltune);
      };
      body(frame, makeVeltune);
      done = true;
    }
    PLINTH_CATCH {
      Ctr::PrintLine(function, line, "Exception");
      refuseWith(frame.exception->code);
    }
    PLINTH_END
  }
  PLINTH_CATCH {
    refuseWith(frame.exception->code);
    done = false;
  }
  PLINTH_END
  releaseLibrary();
  return done;
}

bool Velora::reconstruct(const Table& table, unsigned int cb, unsigned char* ab) {
  const auto body = [&](volatile Frame&, const auto& makeVeltune) {
    if (cb < table.smallest || ab == nullptr) {
      reason::Refuse(ab == nullptr ? VELORA_REASON_ARGUMENT : table.refusal);
      PLINTH_RAISE(CException_General);
    }
    (makeVeltune()->*table.reconstruct)(cb, ab);
  };
  return serve(table.function, table.line, body, [&](int code) {
    // The first reason stays, so these go by weight: not offered at all, what the request ran into,
    // and a size that did not fit.
    if (table.refusal == VELORA_REASON_NOT_OFFERED) {
      reason::Refuse(table.refusal);
    }
    refuse(code);
    if (cb != table.smallest) {
      reason::Refuse(table.refusal);
    }
  });
}

void Velora::refuse(int code) const {
  RefuseRequest(code, m_ePlatform, m_eSupplyFamily, m_eProductVariant, m_eThemeType, m_eMediaType,
                m_eAxisType, m_nVelcases, m_pRawData);
}

bool Velora::reconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab) {
  return reconstruct({VELORA_SIZE_RGB_TO_CMYK, &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK,
                      "reconstructColorTable_RGBtoCMYK", 448, VELORA_REASON_BUFFER},
                     cb, ab);
}

bool Velora::reconstructGrayCurve(unsigned int cb, unsigned char* ab) {
  return reconstruct({VELORA_SIZE_GRAY_CURVE, &fenn::IVeltune::ReconstructGrayCurve,
                      "reconstructGrayCurve", 518, VELORA_REASON_BUFFER},
                     cb, ab);
}

bool Velora::reconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab) {
  return reconstruct({VELORA_SIZE_RGB_TO_RGB, &fenn::IVeltune::ReconstructColorTable_RGBtoRGB,
                      "reconstructColorTable_RGBtoRGB", 586, VELORA_REASON_BUFFER},
                     cb, ab);
}

// The smallest size here and the exact size behind it exclude each other.
bool Velora::reconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab) {
  return reconstruct({VELORA_SIZE_RGB_TO_RGB, &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale,
                      "reconstructColorTable_RGBtoGrayscale", 655, VELORA_REASON_NOT_OFFERED},
                     cb, ab);
}

// Builds the blob for its size alone; nothing is kept for the call that fetches it.
bool Velora::getFuserBlobSize(unsigned int* pcb) { return getFuserBlob(pcb, nullptr, true); }

bool Velora::getFuserBlobData(unsigned int cb, unsigned char* ab) {
  return getFuserBlob(&cb, ab, false);
}

bool Velora::getFuserBlob(unsigned int* pcb, unsigned char* ab, bool bSizeOnly) {
  constexpr char kName[] = "getFuserBlob";
  const auto body = [&](volatile Frame& frame, const auto& makeVeltune) {
    fenn::IArray_uint8* blob = Defer(frame, makeVeltune()->ReconstructFuserBlob());
    const unsigned int count = static_cast<unsigned int>(blob->GetCount());
    if (ab != nullptr && pcb != nullptr && !bSizeOnly) {
      // Refused ahead of the copy: the buffer stays as it was.
      if (count > *pcb) {
        Ctr::PrintLine(kName, 723, "Insufficient buffer for receiving fuser blob");
        reason::Refuse(VELORA_REASON_BUFFER);
        PLINTH_RAISE(CException_General);
      }
      if (count > 0) {
        memcpy(ab, blob->GetElements(), count);
      }
    } else if (pcb != nullptr && bSizeOnly) {
      *pcb = count;
    } else {
      Ctr::PrintLine(kName, 738, "Invalid parameters");
      reason::Refuse(VELORA_REASON_ARGUMENT);
      PLINTH_RAISE(CException_General);
    }
  };
  return serve(kName, 747, body, [this](int code) { refuse(code); });
}

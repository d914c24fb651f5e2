// The facade: one method a table, from a plain request to the object world and back.
// Room: velora/frontend/door. Owns nothing; every pointer is the caller's. A method brings the
// object world up, builds the table, and takes the object world down again; nothing is kept between
// two. Each failure is false with at least one line on standard error, and an untouched buffer.
#pragma once

#include "velora/velora.h"

class RawData;
struct CT_PROCESSING;

class VELORA_API Velora {
 public:
  // Keeps the pointers and checks nothing. A null boot record: the methods boot by themselves.
  Velora(void* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
         ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
         ctr_axis_type eAxisType, unsigned int nVelcases, RawData* pRawData, CT_PROCESSING* pCT);
  // Takes the object world down, if a method has left it up.
  ~Velora();

  // ab[0..cb): the table, whose size cb must be (for RGB to RGB, at most the size of what the pack
  // builds). The grayscale method asks for at least 14739 bytes of a table of 4913, and so never
  // succeeds.
  bool reconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab);
  bool reconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab);
  bool reconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab);
  bool reconstructGrayCurve(unsigned int cb, unsigned char* ab);
  // The size of the fuser blob that fits the print mode.
  bool getFuserBlobSize(unsigned int* pcb);
  // The blob; a longer buffer keeps its last bytes.
  bool getFuserBlobData(unsigned int cb, unsigned char* ab);

 private:
  struct Table;
  // Every method: brings the object world up, runs body(frame, makeVeltune) in the outermost frame,
  // and takes the world down. makeVeltune() gives the object of the request, which ends with the
  // frame. Whatever is raised ends here, as a line and with refuseWith(code).
  template <class Body, class Refuse>
  VELORA_HIDDEN bool serve(const char* function, int line, const Body& body,
                           const Refuse& refuseWith);
  VELORA_HIDDEN bool reconstruct(const Table& table, unsigned int cb, unsigned char* ab);
  VELORA_HIDDEN void refuse(int code) const;  // says why, for velora_last_reason
  VELORA_HIDDEN bool getFuserBlob(unsigned int* pcb, unsigned char* ab, bool bSizeOnly);

  void* m_pBootRecord;
  int m_ePlatform;
  int m_eSupplyFamily;
  int m_eProductVariant;
  ctr_table_type m_eTableType;
  ctr_theme_type m_eThemeType;
  ctr_media_type m_eMediaType;
  ctr_axis_type m_eAxisType;
  unsigned int m_nVelcases;
  RawData* m_pRawData;
  CT_PROCESSING* m_pCT;
};

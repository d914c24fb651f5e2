// All the bytes of one request, by what they are: packs, references, width tables, corrections, and
// the packets of a PFD.
// Room: velora/frontend/toolkit. Owns nothing: every pointer in it leads into the caller's memory,
// which must outlive it. Failures are false or null, with a line on standard error.
#pragma once

#include <cstddef>

#include "velora/frontend/toolkit/AnyEndian.h"
#include "velora/frontend/toolkit/BytePacket.h"
#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/CorrectionPacket.h"
#include "velora/frontend/toolkit/pfd.h"
#include "velora/velora.h"

class VELORA_API RawData {
 public:
  static constexpr unsigned int m_nVelcases_Max = VELORA_MAX_PACKS;

  // The characters of the request's medium and axis.
  RawData(char medium, char axis);
  virtual ~RawData();

  // Through the tracker, family 'X'. Out of memory is null, and no construction.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* p);

  // Zeroes everything but the two characters.
  void ClearData();

  // Points at 1 to 10 packs. False, with no pack, for another number or a null pointer.
  bool readVelcases(unsigned int nVelcases, const ImagingBlob** apVelcases);

  // Points at reference and width table of each channel requested by pCT, and notes a missing one
  // in its status; all channels are tried before the result is false.
  bool readReferenceTable(const ReferenceTable* pTable, CT_PROCESSING* pCT, ctr_axis_type axis,
                          ctr_media_type media);

  // Points at key and plane of each channel that has a correction, and marks it in pCT; no
  // corrections is a normal case.
  void readTableCorrection(const TableCorrections* pCorrections, CT_PROCESSING* pCT,
                           ctr_axis_type axis, ctr_media_type media);

  // The pack at [0..m_nVelcases), or null.
  BytePacket* getVelcase(unsigned int i);
  // All 32 bits of its size, of which the packet has the low 16; 0 where there is no pack.
  unsigned int getVelcaseExtent(unsigned int i) const;
  // The packet of a colour index, or null when there are no bytes.
  BytePacket* getRefPacket(int i);
  BytePacket* getCbatPacket(int i);

  // Checks a PFD's payload tag and table of contents: a result code. Believes the offsets.
  static int validateWrapper(AnyEndian& reader);

  // Points at those packets of a PFD whose channel pCT requests and whose medium and axis are this
  // object's. False when the file does not start like a PFD.
  // Over a reader, offsets and lengths are believed.
  bool readPfd(AnyEndian& reader, CT_PROCESSING* pCT);
  // From a file, what does not lie inside the file is passed over. The bytes come back in
  // *ppBuffer; they must live as long as this object is used, and the caller then calls free().
  bool readPfd(const char* path, unsigned char** ppBuffer, CT_PROCESSING* pCT);

  // The place of a packet code among a colour's four packets, or -1.
  static int getPfdIndex(char code);
  // The PFD packet of a colour index, or null when it was not read or holds nothing.
  BytePacket* getPfdPacket(int colorIndex, char code);

  PfdHeader m_aPfdHeaders[4];    // by colour index, as all that follow
  BytePacket m_aPfdPackets[16];  // colour index times 4 plus getPfdIndex
  BytePacket m_aRefPackets[4];
  BytePacket m_aCbatPackets[4];
  CorrectionPacket m_aCorrections[4];
  unsigned int m_nVelcases;
  BytePacket m_aVelcases[m_nVelcases_Max];
  char m_medium;
  char m_axis;
  // Behind all other fields, whose places are fixed.
  unsigned int m_aVelcaseExtents[m_nVelcases_Max];

 private:
  VELORA_HIDDEN bool readPfdWithin(AnyEndian& reader, CT_PROCESSING* pCT, unsigned int cbFile);
};

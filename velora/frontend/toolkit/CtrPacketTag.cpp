#include "velora/frontend/toolkit/CtrPacketTag.h"

#include <cstring>

namespace {

const struct {
  const char* tag;
  char code;
} kTags[] = {
    {"CPRS", 'R'}, {"CPDC", 'D'}, {"CPCB", 'C'}, {"CPRF", 'F'}, {"CPDS", 'S'},
    {"CPTC", 'T'}, {"DELT", 'S'}, {"GEN", '*'},  {"BCRS", 'r'}, {"BCDC", 'd'},
    {"BCAC", 'c'}, {"BCRF", 'f'}, {"BCDS", 's'}, {"BCTC", 't'}, {"BCCB", 'x'},
};

bool IsOneOf(char code, const char* codes) {
  // strchr finds the terminator too, so a code of 0 is refused first.
  return code != '\0' && strchr(codes, code) != nullptr;
}

}  // namespace

char CtrPacketTag::convertPacketTag(const char* tag) {
  for (const auto& entry : kTags) {
    // A tag that ends early differs at its terminator; nothing is read behind it.
    if (strncmp(tag, entry.tag, strlen(entry.tag)) == 0) return entry.code;
  }
  return 0;
}

bool CtrPacketTag::isMono(char code) { return code >= 'a' && code <= 'z'; }
bool CtrPacketTag::isScalar(char code) { return IsOneOf(code, "Ss"); }
bool CtrPacketTag::isStandard(char code) { return IsOneOf(code, "DFRdfr"); }
bool CtrPacketTag::isCbat(char code) { return IsOneOf(code, "Ccx"); }
bool CtrPacketTag::isCorrection(char code) { return IsOneOf(code, "Tt"); }

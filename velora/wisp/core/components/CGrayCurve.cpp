// A curve of 17 stored nodes, drawn out to 256 levels.
#include "velora/wisp/core/components/CGrayCurve.h"

#include "velora/wisp/core/pyramid.h"

namespace velora::v1::wisp::core::components {

namespace {

constexpr int kLevels = 256;

// Piecewise linear between the nodes in 1/64, a box filter of three taps on all but the two ends,
// and a rounded cut to 8 bits.
void ExpandCurve(const unsigned char* nodes, unsigned char* curve) {
  // In 1/64 of a value: at most 16320.
  int expanded[kLevels];
  for (int i = 0; i < kLevels; ++i) {
    // Level i lies at i * 16 / 255 nodes from the first; level 255 is the last node itself.
    const int position = 16 * i;
    const int node = position / 255;
    const int part = position * 64 / 255 - node * 64;
    expanded[i] = node == kNeutrals - 1 ? nodes[node] * 64
                                        : (64 - part) * nodes[node] + part * nodes[node + 1];
  }
  // A weighted mean of bytes is a byte, so nothing needs to be held. 32 and 96 are the halves of
  // the divisors.
  curve[0] = static_cast<unsigned char>((expanded[0] + 32) / 64);
  for (int i = 1; i < kLevels - 1; ++i) {
    curve[i] =
        static_cast<unsigned char>((expanded[i - 1] + expanded[i] + expanded[i + 1] + 96) / 192);
  }
  curve[kLevels - 1] = static_cast<unsigned char>((expanded[kLevels - 1] + 32) / 64);
}

}  // namespace

using CGrayCurveData = CGrayCurve::CGrayCurveData;

CGrayCurveData::CGrayCurveData() : m_WISPGrayCurve(), m_nChecksum(0) {}

CGrayCurveData::~CGrayCurveData() = default;

void CGrayCurveData::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

void CGrayCurveData::Init(const WISPGrayCurve* curve) {
  BeginInit();
  if (curve == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  m_WISPGrayCurve = *curve;
  m_nChecksum = common::core::SumBytes(m_WISPGrayCurve.curve, 0, kLevels);
  valid = true;
}

void CGrayCurveData::Init(api::IGrayCurveData* other) {
  BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Init(other->GetWISPGrayCurve());
}

const WISPGrayCurve* CGrayCurveData::GetWISPGrayCurve() const {
  CheckThis();
  return &m_WISPGrayCurve;
}

unsigned int CGrayCurveData::GetChecksum() const {
  CheckThis();
  return m_nChecksum;
}

void CGrayCurveData::Reset() {
  plinth::v1::core::CObject::Reset();
  m_WISPGrayCurve = {};
  m_nChecksum = 0;
}

using CFromData = CGrayCurve::COperator::CFromData;

CFromData::CFromData() = default;

void CFromData::Init(IArray_uint8* nodes) { InitBytes(nullptr, nodes); }

IArray_uint8* CFromData::GetArray_uint8_Nodes_GrayCurve_Encoded() const { return GetBytes(); }

Operators* CFromData::Resolve(Operators* operators, IProperties* newProperties, IVeltune* veltune) {
  this->BeginResolve(operators, newProperties, veltune);
  WISPGrayCurve record = {};
  ExpandCurve(GetBytes()->GetElements(), record.curve);
  this->data.Take(Create<Configuration, CGrayCurveData>());
  this->data->Init(&record);
  this->Call_Callback_Resolve_Done();
  return operators;
}

// An image can store any number of bytes here. The test comes ahead of every use, so ExpandCurve
// can read 17.
void CFromData::CheckThis() const {
  Base::CheckThis();
  if (this->bytes->GetCount() != kNeutrals) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

}  // namespace velora::v1::wisp::core::components

#include "qzxml/xml/GrowthBound.h"

#include <algorithm>
#include <utility>

#include "qzxml/runtime/Functions.h"
#include "qzxml/runtime/QzException.h"

namespace QzXmlLib16::detail {
namespace {

// A tree of so many octets is no danger, however small its input is.
constexpr std::uint64_t kOctetsWithoutBound = 8 * 1024 * 1024;

thread_local CInputOrigin* t_innermost = nullptr;

}  // namespace

void CGrowthBound::Begin(std::uint32_t times) {
  m_times = times;
  m_octets = 0;
  SetInputOctets(0);
}

void CGrowthBound::SetInputOctets(std::uint64_t octets) {
  m_maxOctets = m_times != 0 ? std::max(kOctetsWithoutBound, octets * m_times) : kNone;
}

void CGrowthBound::Throw() const {
  throw CQzException(
      FormatString("The document grows past %d times its size", static_cast<int>(m_times)));
}

CInputOrigin::CInputOrigin() : m_pOuter(std::exchange(t_innermost, this)) {}

CInputOrigin::~CInputOrigin() { t_innermost = m_pOuter; }

void CInputOrigin::Tell(const unsigned char* octets, std::uint64_t originOctets) {
  if (t_innermost == nullptr) return;
  t_innermost->m_pOctets = octets;
  t_innermost->m_originOctets = originOctets;
}

std::uint64_t CInputOrigin::Measure(const unsigned char* octets, std::uint64_t size) {
  if (t_innermost == nullptr || t_innermost->m_pOctets != octets) return size;
  return std::min(size, t_innermost->m_originOctets);
}

}  // namespace QzXmlLib16::detail

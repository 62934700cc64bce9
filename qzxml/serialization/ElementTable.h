#pragma once

#include "qzxml/serialization/ElementInfo.h"

// What can be known of the members of a table without asking each of them for each object. Only the
// library's own classes are known; a class derived from one of them may do anything.
namespace QzXmlLib16Data {

// Whether a member is known to make nothing of the namespace of its object.
bool ReadsNoNamespace(const CElementInfo& member);

// Whether a member is known to write no attributes for its object: it has a tag of its own, or is
// no class.
bool WritesNoAttributes(const CElementInfo& member);

// Whether a member that is not found in a class without a tag leaves no trace where it was looked
// for, but in the one place where it was asked last.
bool IsSoughtWithoutTrace(const CElementInfo& member);

// Whether that member looks up to the last sibling itself when it is asked once.
bool LooksToTheEnd(const CElementInfo& member);

}  // namespace QzXmlLib16Data

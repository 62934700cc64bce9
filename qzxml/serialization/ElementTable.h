#pragma once

#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/ParentElementInfo.h"

// What can be known of the members of a table without asking each of them for each object. Only the
// library's own classes are known; a class derived from one of them may do anything.
namespace QzXmlLib16Data {

// Whether a member is known to make nothing of the namespace of its object.
bool ReadsNoNamespace(const CElementInfo& member);

// Whether a member is known to write no attributes for its object: it has a tag of its own, or is
// no class.
bool WritesNoAttributes(const CElementInfo& member);

// Whether all members of a table are known to be so; what is found for a table is kept.
bool AreAll(CElementInfo** table, bool (*isSo)(const CElementInfo&),
            CFoundFor<CElementInfo*>& foundFor);

// Whether it is known of a member of a sequence that what it takes, and where, depends only on the
// element at which it is asked.
bool IsSoughtByPlace(const CElementInfo& member);

// Whether that member looks up to the last sibling itself when it is asked once in a group.
bool LooksToTheEnd(const CElementInfo& member);

// Whether a member of a sequence is one of the library's collections.
bool IsSequenceCollection(const CElementInfo& member);

// Whether a member of a choice is one of those of which each item is an element.
bool IsChoiceCollectionOfElements(const CElementInfo& member);

}  // namespace QzXmlLib16Data

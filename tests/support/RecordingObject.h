#pragma once

#include <string>
#include <vector>

#include "tests/support/GeneratedTable.h"

namespace qztest {

// What happens to recording objects while one of these lives, in its order. An object is named by
// its element:
//
//   "r init"               its Init was called
//   "r gives 0"            a property was read
//   "r takes 0 7"          a property was set: to a text,
//   "r takes 0 <a> empty"  to an object, none of whose properties is set, or that is "filled",
//   "r takes 0 null"       to no object
class CRecord {
 public:
  CRecord();
  ~CRecord();
  CRecord(const CRecord&) = delete;
  CRecord& operator=(const CRecord&) = delete;

  // What was noted since the last call.
  std::vector<std::string> Take();

  static void Note(const std::string& call);  // nothing where none lives
};

class CRecordingObject : public CTableObject {
 public:
  using CTableObject::CTableObject;

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override;
  void Init() override;
};

// A choice whose setters keep its rule as generated ones do: the name of the one property that is
// set, "P0" for the first, is in selected.
class CSelectingObject : public CRecordingObject {
 public:
  using CRecordingObject::CRecordingObject;
  mutable std::string selected;

 protected:
  void AccessProperty(int index, bool read, QzVariant& value) const override;
  void Init() override;
};

// Tables that the factories below find by their class id.
class CMadeTables : public CTables {
 public:
  explicit CMadeTables(XmlElementGroupType group = QzXmlLib16Data::XmlElementGroupType_Sequence,
                       XmlElementType type = QzXmlLib16Data::XmlElementType_Element);
  ~CMadeTables();
};

// Generated factories: of objects that record, and of objects that can be nil; and by the local
// name of the element among all CMadeTables, of objects that record, null where no class has it.
CSmartPtr<CXmlObjectBase> MakeRecordingObject(int classId, const char* elementName);
CSmartPtr<CXmlObjectBase> MakeNillableObject(int classId, const char* elementName);
CSmartPtr<CXmlObjectBase> MakeRecordingObjectByName(CXmlElement* element);

}  // namespace qztest

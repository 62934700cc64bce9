#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"
#include "qzxml/platform/Threads.h"
#include "qzxml/runtime/ObjectMemory.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/serialization/EventSink.h"
#include "qzxml/serialization/Nillable.h"
#include "qzxml/serialization/SerializationContext.h"

namespace QzXmlLib16Data {
class CAttributeInfo;
class CElementInfo;
}  // namespace QzXmlLib16Data

namespace QzXmlLib16 {

class CBinaryData;
class CElement;
class CXmlCollectionBase;
class CTextStream;
class CXmlElement;
class CXmlWriter;

namespace detail {
template <typename Sink>
class CPlannedWriting;
class CReadPlan;
}  // namespace detail

// True lets ToXmlFile and ToJsonFile write while the document grows, when they are not to compress:
// memory then holds one chunk of it. False, the default, has it whole in memory first. For the
// whole process; to be set before work starts.
QZXML_API void AsyncToXmlFile(bool async);

// The root of everything that can be written as a document and read back: generated classes,
// collections and open content.
//
//   CSmartPtr<COrder> order(new COrder);
//   order->FromXml("<order><id>7</id></order>");
//   order->SetId(8);
//   std::string text = order->ToXml();
//
// An object counts its references itself and is held by CSmartPtr; when the last one goes it
// deletes itself. An object on the stack is never released. A copy takes over the element name and
// the count as they stand; assignment takes over the name alone, since the count belongs to those
// who hold the target. The count is the only state that threads may share.
class QZXML_API CXmlObjectBase : public IEventSink, public detail::CObjectPlaced {
 public:
  // A collection that this object listens to has changed. Does nothing here.
  void OnEvent(CXmlObjectBase* sender, MsgType type, void* data) override;

  // The object as CXmlObjectBase, for a class that has a second base.
  virtual CXmlObjectBase* GetBase() = 0;
  const CXmlObjectBase* GetBase() const { return const_cast<CXmlObjectBase*>(this)->GetBase(); }

  // --- Writing

  // Every entry throws CQzException and its family for a value that the schema does not allow; the
  // object is never changed. Those that give bytes or a file throw CQzException "Unknown Encoding,
  // select UTF-8 (contact our support team)" for another encoding than UTF-8 and the two of UTF-16,
  // and what CQzZip::Compress throws. A file is made anew where there is one, begins with FF FE for
  // UTF-16, and stays as far as it got where the system fails: CQzException "Failed to write data
  // to the file [%s] error [0x%08X]". CompressionType_ZLib is not for files: CQzException "ZLIB
  // Compression only available for To Stream methods.".

  // Into a file: the whole document in one go, or bit by bit as AsyncToXmlFile says; Fast Infoset
  // always in one go.
  virtual void ToXmlFile(
      const char* fileName, bool declaration = true, bool formatted = true,
      XmlEncoding encoding = XmlEncoding_UTF8, EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;
  virtual void ToFastInfosetFile(
      const char* fileName, FInfoDecl declaration = FInfoDecl_None,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;
  virtual void ToJsonFile(
      const char* fileName, bool formatted = true, XmlEncoding encoding = XmlEncoding_UTF8,
      EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;
  // The text of a document.
  virtual std::string ToXml(
      bool declaration = true, bool formatted = true, EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext()) const;
  virtual std::string ToJson(
      bool formatted = true, EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext()) const;
  // The bytes of a document, without a byte-order mark.
  virtual CBinaryData ToXmlStream(
      bool declaration = true, bool formatted = true, XmlEncoding encoding = XmlEncoding_UTF8,
      EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;
  virtual CBinaryData ToFastInfosetStream(
      FInfoDecl declaration = FInfoDecl_None,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;
  virtual CBinaryData ToJsonStream(
      bool formatted = true, XmlEncoding encoding = XmlEncoding_UTF8, EOLType eol = EOLType_LF,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext(),
      CompressionType compression = CompressionType_None) const;

  // --- Reading
  // Each empties the object and fills it from a document, whose root may have any name: the object
  // takes that name. Throws what loading the document throws, and CQzException with the path of the
  // element for what the schema does not allow; the object then keeps what was read so far.
  // FromXmlElement throws CQzException "Invalid or empty XML document" for null.
  //
  // JSON is turned into XML text first, by CXmlDocument::LoadJson and its like; where that text can
  // not be read, CQzException "Error converting JSON to XML:\n%s" with the text goes around the
  // failure. Below JsonRoundTrip_Full namespaces are ignored: the flag of the context is set for
  // the time of the call, though it is const, so one context does not serve two such calls at once.
  // Meant: the flag is put back to what its getter answered before, which is true for
  // SchemaType_NoNamespaces.

  virtual void FromXmlFile(const char* fileName, const CSerializationContext& context =
                                                     CSerializationContext::GetDefaultContext());
  virtual void FromJsonFile(const char* fileName, const CSerializationContext& context =
                                                      CSerializationContext::GetDefaultContext());
  virtual void FromXml(const wchar_t* text, const CSerializationContext& context =
                                                CSerializationContext::GetDefaultContext());
  virtual void FromXml(const char* text, const CSerializationContext& context =
                                             CSerializationContext::GetDefaultContext());
  virtual void FromJson(const wchar_t* text, const CSerializationContext& context =
                                                 CSerializationContext::GetDefaultContext());
  virtual void FromJson(const char* text, const CSerializationContext& context =
                                              CSerializationContext::GetDefaultContext());
  virtual void FromXmlStream(
      const CBinaryData& data,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  virtual void FromXmlStream(
      const BYTE* data, DWORD length,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  virtual void FromJsonStream(
      const CBinaryData& data,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  virtual void FromJsonStream(
      const BYTE* data, DWORD length,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  // Goes through text.
  virtual void FromXmlElement(
      const CElement* element,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  virtual void FromXmlElement(
      const CXmlElement* element,
      const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  // UTF-16.
  void FromXml(const char16_t* text,
               const CSerializationContext& context = CSerializationContext::GetDefaultContext());
  void FromJson(const char16_t* text,
                const CSerializationContext& context = CSerializationContext::GetDefaultContext());

  // --- Lifetime. Both give the new count; the last Release deletes the object.
  std::int32_t AddRef();
  std::int32_t Release();

  virtual ~CXmlObjectBase();

  // The target namespace of the schema that declares the type.
  virtual std::string GetTargetNamespace() const = 0;
  // The namespace of the object's element.
  virtual std::string GetNamespace() const = 0;

 protected:
  CXmlObjectBase();
  CXmlObjectBase(const CXmlObjectBase& other);
  CXmlObjectBase& operator=(const CXmlObjectBase& other);

  // --- What a class does to be written and read

  // Puts the attributes on the start tag that is open. Does nothing here.
  virtual void AttributesToXml_Int(CXmlWriter* writer, const CSerializationContext& context) const;
  // Writes the object. root is true for the element of the document alone; namespaceUri is what the
  // caller writes in, for the document its target namespace.
  virtual void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                         const CSerializationContext& context, bool optionalChoice) const = 0;
  // Reads the object from its element; cursor is the first child that is not read yet, or null.
  // Gives the first element that the object left.
  virtual CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                   const CSerializationContext& context, bool optionalChoice) = 0;

  // The three above for one class on an object of another; the last passes false at the end.
  static void AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                  const CSerializationContext& context);
  static void ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool root,
                        const char* namespaceUri, const CSerializationContext& context,
                        bool optionalChoice);
  static CXmlElement* FromXml_Int(CXmlObjectBase* object, CXmlElement* parent, CXmlElement* cursor,
                                  const CSerializationContext& context);

  // --- The local name under which the object is written. Empty at first; null sets the empty name.
  std::string GetElementName() const { return m_strElementName; }
  const std::string& ElementName() const { return m_strElementName; }  // without a copy
  void SetElementName(const char* name);
  static void SetElementName(CXmlObjectBase* object, const char* name);

  // --- Rules of a choice: one member at most is set. selected is the name of that member, or "".

  // Throws CQzInvalidStateException "The Property %s is already set. Only one element within this
  // class bay be set at a time" where valid and another member, or none, is selected; not valid
  // clears selected.
  void Choice_SetElementValid(bool valid, const char* propertyName, std::string& selected);
  // A value selects the member, null gives it up. Throws CQzInvalidStateException "The Property
  // [%s] is already set. ..." for a value while another member is selected.
  void Choice_SelectElement(const char* propertyName, CXmlObjectBase* value, std::string& selected);
  // As above, with a collection of count items for a value.
  void Choice_CollectionChanged(const char* propertyName, std::int32_t count,
                                std::string& selected);
  // Reads a collection once: nothing while count is above 0; else what the collection takes moves
  // the cursor, has its number checked, and raises count.
  void Choice_Read_Collection(CXmlCollectionBase* collection, CXmlElement* parent,
                              CXmlElement*& cursor, std::int32_t& count,
                              const CSerializationContext& context);

  // Throws CQzInvalidParamException "The Property [%s] is mandatory, it may node be NULL".
  void Throw_IfPropertyIsNull(CXmlObjectBase* value, const char* propertyName);
  // Throws CQzInvalidParamException "This property requires an element with the name %s the element
  // being set has the element name %s". Null passes.
  void Throw_IfElementNameDiffers(CXmlObjectBase* value, const char* expectedName);

  // --- Rules of namespaces; see NamespaceRules.h. Null is taken as the empty text.
  void TestNamespace(const char* namespaceUri, const char* restrictions,
                     const char* targetNamespace) const;
  bool IsNamespaceValid(const char* namespaceUri, const char* restrictions,
                        const char* targetNamespace) const;
  bool DoesElementNameMatch(const CSerializationContext& context, const CXmlElement* element,
                            const char* name, const char* namespaceUri) const;

  // --- Tell a listener what happens to a collection. An index of -1 goes out as a null pointer.
  static void FireOnCollectionChangeEvent(IEventSink* sink, CXmlCollectionBase* collection);
  static void FireOnCollectionAddEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                       void* item);
  static void FireOnCollectionAddCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                               void* item);
  static void FireOnCollectionRemoveEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                          int index);
  static void FireOnCollectionRemoveCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                                  int index);

 private:
  template <bool isInMemory, typename Load>
  void FromDocument(const CSerializationContext& context, Load load);
  void WriteXml(CTextStream& stream, bool declaration, bool formatted, EOLType eol,
                const CSerializationContext& context) const;
  void WriteJson(CTextStream& stream, bool formatted, EOLType eol,
                 const CSerializationContext& context) const;

  // The walks reach the protected operations of objects of every class.
  friend class CAttributeCol;
  friend class CBoundClass;
  friend class CElement;
  friend class CElementCol;
  friend class CXmlCollection;
  friend class CXmlCollectionBase;
  friend class CXmlGeneratedClass;
  friend class CXmlTypeCollection;
  friend class QzXmlLib16Data::CAttributeInfo;
  friend class QzXmlLib16Data::CElementInfo;
  // For compilers that take the friends of a derived class for none of its base.
  friend class detail::CReadPlan;
  template <typename Sink>
  friend class detail::CPlannedWriting;

  void FromJson_Int(const CBinaryData& xml, const CSerializationContext& context);

  void Destroy();  // not inline: a compiler that sees an object on the stack warns of its deletion

  std::string m_strElementName;
  std::atomic<std::int32_t> m_lRefCount;
  bool m_isBound = false;  // a CBoundClass, which is asked of every item of a collection
};

inline std::int32_t CXmlObjectBase::AddRef() {
  return detail::AddToCounter(m_lRefCount, 1, std::memory_order_relaxed) + 1;
}

inline std::int32_t CXmlObjectBase::Release() {
  const std::int32_t count = detail::AddToCounter(m_lRefCount, -1, std::memory_order_acq_rel) - 1;
  if (count == 0) Destroy();
  return count;
}

}  // namespace QzXmlLib16

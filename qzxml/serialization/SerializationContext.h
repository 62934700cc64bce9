#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "qzxml/platform/Export.h"
#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/runtime/XmlTypes.h"
#include "qzxml/serialization/NamespaceAliasMap.h"

namespace QzXmlLib16 {

class CAttributeCol;
class CFastInfosetContext;
class CJsonContext;

// The options of reading and writing: every To... and From... operation takes one by const
// reference, and every layer below consults it.
//
//   CSerializationContext context;
//   context.SetIndentChars("  ");
//   context.GetNamespaceAliases().Add("o", "urn:orders");
//   std::string text = order.ToXml(true, true, EOLType_LF, context);
//
// A copy has its own strings, lists and aliases; the additional root attributes and the options of
// JSON and Fast Infoset are shared with the source once they exist. A context belongs to the thread
// that changes it; threads may read one that nobody changes.
class QZXML_API CSerializationContext {
 public:
  CSerializationContext();
  CSerializationContext(const CSerializationContext& other);
  CSerializationContext& operator=(const CSerializationContext& other);
  virtual ~CSerializationContext();

  // The one context of the process that operations use when none is given. It is there before the
  // program's static objects are built and until they are gone. A change to it is seen by every
  // later user, and is not guarded against other threads.
  static CSerializationContext& GetDefaultContext();

  // --- Writing

  // The default namespace of the root, when not empty. "". Null is taken as the empty text.
  const std::string& GetDefaultNamespaceURI() const { return m_strDefaultNamespaceURI; }
  void SetDefaultNamespaceURI(const char* uri);

  // Whether an object written under a derived name carries xsi:type. True.
  bool GetWriteTypeAttribute() const { return m_bWriteTypeAttribute; }
  void SetWriteTypeAttribute(bool write) { m_bWriteTypeAttribute = write; }

  // Processing instructions, written before the root in their order. None.
  const std::vector<std::string>& GetProcessingInstructions() const {
    return m_processingInstructions;
  }
  std::vector<std::string>& GetProcessingInstructions() { return m_processingInstructions; }

  // Text written as the first content of the root, when not empty. "". Null is the empty text.
  const std::string& GetInLineSchema() const { return m_strInLineSchema; }
  void SetInLineSchema(const char* schema);

  // Whether an optional attribute that equals its default is left out. False.
  bool GetNoOptionalAttributeDefaultOutput() const { return m_bNoOptionalAttributeDefaultOutput; }
  void SetNoOptionalAttributeDefaultOutput(bool b) { m_bNoOptionalAttributeDefaultOutput = b; }

  // Whether elements that carry their default value are written. False.
  bool GetWriteDefaultElementValues() const { return m_bWriteDefaultElementValues; }
  void SetWriteDefaultElementValues(bool write) { m_bWriteDefaultElementValues = write; }

  // The unit of indentation of formatted output. "\t". Null is the empty text.
  // Throws CQzInvalidParamException "IndentChars can only contain Whitespace characters, i.e. \\t
  // or spaces" (a backslash and a t) for anything but blanks and tabs, and keeps the old unit.
  const std::string& GetIndentChars() const { return m_strIndentChars; }
  void SetIndentChars(const char* indent);

  // Prefixes declared on the root. None.
  const CNamespaceAliasMap& GetNamespaceAliases() const { return m_namespaceAliases; }
  CNamespaceAliasMap& GetNamespaceAliases() { return m_namespaceAliases; }

  // Attributes written on the root beside its own. Made on the first call, empty and open for every
  // namespace; two threads that read one context get the same collection.
  CSmartPtr<CAttributeCol> GetAdditionalRootAttributes() const;

  // --- Reading

  // Whether elements that match nothing are skipped. False.
  // Setting it throws CQzInvalidStateException "The parser can only ignore additional elements, or
  // ignore the fact ..." while IgnoreMissingMandatoryElements is set; clearing it never throws.
  bool GetIgnoreUnknownElements() const { return m_bIgnoreUnknownElements; }
  void SetIgnoreUnknownElements(bool ignore);

  // Whether a mandatory child that is missing from a sequence is passed over. False.
  // Setting it throws as above while IgnoreUnknownElements is set.
  bool GetIgnoreMissingMandatoryElements() const { return m_bIgnoreMissingMandatoryElements; }
  void SetIgnoreMissingMandatoryElements(bool ignore);

  // Whether attributes that match nothing are skipped. False.
  bool GetIgnoreUnknownAttributes() const { return m_bIgnoreUnknownAttributes; }
  void SetIgnoreUnknownAttributes(bool ignore) { m_bIgnoreUnknownAttributes = ignore; }

  // Whether elements and attributes match by local name alone. False; always true for
  // SchemaType_NoNamespaces.
  bool GetIgnoreNamespaces() const {
    return m_bIgnoreNamespaces || m_schemaType == SchemaType_NoNamespaces;
  }
  void SetIgnoreNamespaces(bool ignore) { m_bIgnoreNamespaces = ignore; }

  // How documents treat namespaces. SchemaType_Default.
  SchemaType GetSchemaType() const { return m_schemaType; }
  void SetSchemaType(SchemaType type) { m_schemaType = type; }

  // When false, the text of a CDATA section keeps its markers in the tree. True.
  bool GetStripCDATA() const { return m_bStripCDATA; }
  void SetStripCDATA(bool strip) { m_bStripCDATA = strip; }

  // How deep elements may be nested, the root counting 1. 1024; 0 for no limit.
  std::uint32_t GetMaxDepth() const { return m_dwMaxDepth; }
  void SetMaxDepth(std::uint32_t depth) { m_dwMaxDepth = depth; }

  // How many times the size of the input its names, values and text may take in the tree, once they
  // take more than 8 MiB. 100; 0 for no limit.
  std::uint32_t GetMaxAmplification() const { return m_dwMaxAmplification; }
  void SetMaxAmplification(std::uint32_t times) { m_dwMaxAmplification = times; }

  // --- Both

  // Whether the minimum and maximum of collections go unchecked. False.
  bool GetIgnoreInvalidCollectionCounts() const { return m_bIgnoreInvalidCollectionCounts; }
  void SetIgnoreInvalidCollectionCounts(bool b) { m_bIgnoreInvalidCollectionCounts = b; }

  // Whether a choice may have no chosen member. False.
  bool GetIgnoreMissingChoice() const { return m_bIgnoreMissingChoice; }
  void SetIgnoreMissingChoice(bool ignore) { m_bIgnoreMissingChoice = ignore; }

  // The options of JSON. Made on the first call, with their defaults; two threads that read one
  // context get the same.
  CJsonContext& GetJsonContext() const;

  // The options of Fast Infoset, likewise.
  CFastInfosetContext& GetFIContext() const;

 private:
  // One reference on the attributes of the root, which two readers may ask for first at once.
  class CRootAttributes {
   public:
    CRootAttributes() = default;
    CRootAttributes(const CRootAttributes& other);  // shares what the other has, if it has it
    CRootAttributes& operator=(const CRootAttributes& other);
    ~CRootAttributes();

    CAttributeCol* GetOrMake();  // stays ours

   private:
    CAttributeCol* Share() const;  // with a reference for the caller; may be null

    std::atomic<CAttributeCol*> m_p{nullptr};
  };

  // The options of one format, which two readers may ask for first at once and copies share.
  template <typename Options>
  class CFormatOptions {
   public:
    CFormatOptions() = default;
    CFormatOptions(const CFormatOptions& other) : m_p(other.Share()) {}
    CFormatOptions& operator=(const CFormatOptions& other) {
      std::atomic_store(&m_p, other.Share());
      return *this;
    }

    Options& GetOrMake();

   private:
    std::shared_ptr<Options> Share() const { return std::atomic_load(&m_p); }  // may be null

    std::shared_ptr<Options> m_p;
  };

  std::string m_strDefaultNamespaceURI;
  std::string m_strInLineSchema;
  std::string m_strIndentChars = "\t";
  std::vector<std::string> m_processingInstructions;
  CNamespaceAliasMap m_namespaceAliases;
  mutable CRootAttributes m_additionalRootAttributes;
  mutable CFormatOptions<CJsonContext> m_jsonContext;
  mutable CFormatOptions<CFastInfosetContext> m_fastInfosetContext;
  SchemaType m_schemaType = SchemaType_Default;
  std::uint32_t m_dwMaxDepth = 1024;
  std::uint32_t m_dwMaxAmplification = 100;
  bool m_bWriteTypeAttribute = true;
  bool m_bIgnoreInvalidCollectionCounts = false;
  bool m_bIgnoreMissingChoice = false;
  bool m_bIgnoreMissingMandatoryElements = false;
  bool m_bIgnoreUnknownElements = false;
  bool m_bIgnoreUnknownAttributes = false;
  mutable bool m_bIgnoreNamespaces = false;  // changed for a time while JSON is read
  bool m_bNoOptionalAttributeDefaultOutput = false;
  bool m_bWriteDefaultElementValues = false;
  bool m_bStripCDATA = true;
};

}  // namespace QzXmlLib16

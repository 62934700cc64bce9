#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "qzxml/platform/Export.h"

// The exceptions of the library. Every failure is one of these classes, thrown by value:
//
//   CQzException                    writers, streams, files, parsers
//     CQzValidationException        the document breaks its schema
//       CQzInvalidValueException    a value that fails a conversion or a facet
//       CQzInvalidNamespaceException  namespace rules of open content
//     CQzInvalidStateException      the object's state forbids the operation
//     CQzInvalidParamException      bad arguments
//     CQzOverFlowException          a decimal too large for a native type
//
// An exception carries the one that caused it, and so on inwards. Links are shared by all copies of
// an exception and never change, so wrapping costs one link at each level, whatever the length.
// A plain value: copy it freely, keep it, throw it again from another thread.

namespace QzXmlLib16 {

class QZXML_API CQzException {
 public:
  CQzException() = default;
  explicit CQzException(std::string message);
  CQzException(std::string message, const CQzException& inner);

  // With a path that is not empty, the message becomes "<message>\nPath: <path>".
  CQzException(std::string message, std::string path);
  CQzException(std::string message, std::string path, const CQzException& inner);

  CQzException(const CQzException& other);

  // Takes the other's message and inner exception.
  // Meant: the path stays as it was; the message taken over already ends with the other's path.
  CQzException& operator=(const CQzException& other);

  virtual ~CQzException();

  // The text, with the line of the path if there is one.
  std::string GetMessage() const { return m_strMessage; }

  // The place in the document, as CXmlElement::GetXPath gives it; empty when none was told.
  std::string GetPath() const { return m_strPath; }

  // The messages of this exception and of all inner ones, outermost first, with "\n" in between.
  std::string GetFullMessage() const;

  // Owned by this exception; null when there is none.
  const CQzException* GetInnerException() const { return m_pInner; }

 protected:
  // A copy of the most derived class on the heap; the caller owns it.
  virtual CQzException* Clone() const;

 private:
  static const CQzException* Hold(const CQzException* link);
  static void Drop(const CQzException* link);

  std::string m_strMessage;
  std::string m_strPath;
  const CQzException* m_pInner = nullptr;         // counted by the m_links of what it points at
  mutable std::atomic<std::uint32_t> m_links{1};  // of a link: how many exceptions point at it
};

class QZXML_API CQzValidationException : public CQzException {
 public:
  CQzValidationException() = default;
  CQzValidationException(std::string message, std::string path);
  CQzValidationException(std::string message, std::string path, const CQzException& inner);
  // Takes over message, path and inner exception of any exception of the family.
  explicit CQzValidationException(const CQzException& other);

 protected:
  CQzException* Clone() const override;

 private:
  std::string m_strReserved;  // Meant: always empty; generated code relies on the size
};

class QZXML_API CQzInvalidValueException : public CQzValidationException {
 public:
  CQzInvalidValueException() = default;
  explicit CQzInvalidValueException(std::string message);
  CQzInvalidValueException(std::string message, const CQzException& inner);
  explicit CQzInvalidValueException(const CQzException& other);

 protected:
  CQzException* Clone() const override;
};

class QZXML_API CQzInvalidNamespaceException : public CQzValidationException {
 public:
  CQzInvalidNamespaceException() = default;
  CQzInvalidNamespaceException(std::string message, std::string path);
  CQzInvalidNamespaceException(std::string message, std::string path, const CQzException& inner);
  explicit CQzInvalidNamespaceException(const CQzException& other);

 protected:
  CQzException* Clone() const override;
};

class QZXML_API CQzInvalidStateException : public CQzException {
 public:
  CQzInvalidStateException() = default;
  explicit CQzInvalidStateException(std::string message);
  CQzInvalidStateException(std::string message, const CQzException& inner);
  explicit CQzInvalidStateException(const CQzException& other);

 protected:
  CQzException* Clone() const override;
};

class QZXML_API CQzInvalidParamException : public CQzException {
 public:
  CQzInvalidParamException() = default;
  explicit CQzInvalidParamException(std::string message);
  CQzInvalidParamException(std::string message, const CQzException& inner);
  explicit CQzInvalidParamException(const CQzException& other);

 protected:
  CQzException* Clone() const override;
};

class QZXML_API CQzOverFlowException : public CQzException {
 public:
  CQzOverFlowException() = default;
  explicit CQzOverFlowException(std::string message);
  CQzOverFlowException(std::string message, const CQzException& inner);
  explicit CQzOverFlowException(const CQzException& other);

 protected:
  CQzException* Clone() const override;
};

}  // namespace QzXmlLib16

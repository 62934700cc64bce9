#pragma once

namespace qzxml::generator {

// A schema for the attributes of http://www.w3.org/XML/1998/namespace, for schemas that import it
// without saying where one is. Source: XML 1.0, sections 2.10 and 2.12; XML Base; xml:id 1.0.
inline constexpr char kXmlNamespaceSchema[] = R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
    targetNamespace="http://www.w3.org/XML/1998/namespace">
  <xs:attribute name="lang">
    <xs:annotation><xs:documentation>The language of the content, or none.</xs:documentation></xs:annotation>
    <xs:simpleType>
      <xs:union memberTypes="xs:language">
        <xs:simpleType><xs:restriction base="xs:string"><xs:enumeration value=""/></xs:restriction></xs:simpleType>
      </xs:union>
    </xs:simpleType>
  </xs:attribute>
  <xs:attribute name="space">
    <xs:annotation><xs:documentation>Whether white space is meant to be kept.</xs:documentation></xs:annotation>
    <xs:simpleType>
      <xs:restriction base="xs:NCName">
        <xs:enumeration value="default"/>
        <xs:enumeration value="preserve"/>
      </xs:restriction>
    </xs:simpleType>
  </xs:attribute>
  <xs:attribute name="base" type="xs:anyURI">
    <xs:annotation><xs:documentation>What relative references are relative to.</xs:documentation></xs:annotation>
  </xs:attribute>
  <xs:attribute name="id" type="xs:ID">
    <xs:annotation><xs:documentation>The name of the element in its document.</xs:documentation></xs:annotation>
  </xs:attribute>
  <xs:attributeGroup name="specialAttrs">
    <xs:attribute ref="xml:base"/>
    <xs:attribute ref="xml:lang"/>
    <xs:attribute ref="xml:space"/>
    <xs:attribute ref="xml:id"/>
  </xs:attributeGroup>
</xs:schema>
)";

}  // namespace qzxml::generator

#pragma once

// The form of schema documents as a table: what XML Schema 1.0 part 1, appendix A, says as a
// schema.

namespace qzxml::generator {

// The elements of XML Schema by the places where they stand, for the same element has other
// attributes and other content at the top of a schema than within a type.
//
// Attributes: "name:kind", with "!" behind it where it is required. Kinds are those of
// SchemaSyntax.cpp. Every form but documentation and appinfo also has "id:ID".
// Content: positions with ";" between them, in their order; each has alternatives with "|" between
// them and "?", "*", "+" or nothing behind it. An alternative is an element and, behind "=", its
// form if that is another than the element's name.
struct SyntaxForm {
  const char* name;
  const char* attributes;
  const char* content;
};

#define QZXML_ATTRIBUTES \
  "attribute=localAttribute|attributeGroup=attributeGroupRef *; anyAttribute ?"
#define QZXML_FACETS                                                                      \
  "minExclusive=facet|minInclusive=facet|maxExclusive=facet|maxInclusive=facet"           \
  "|totalDigits=digits|fractionDigits=count|length=count|minLength=count|maxLength=count" \
  "|enumeration=openFacet|whiteSpace|pattern=openFacet *"
#define QZXML_PARTICLE "group=groupRef|all|choice|sequence ?"

inline constexpr SyntaxForm kSyntaxForms[] = {
    {"schema",
     "targetNamespace:name version:text finalDefault:typeFinal blockDefault:elementBlock "
     "attributeFormDefault:form elementFormDefault:form",
     "include|import|redefine|annotation *; simpleType=namedSimpleType|"
     "complexType=namedComplexType|group=namedGroup|attributeGroup=namedAttributeGroup|"
     "element=globalElement|attribute=globalAttribute|notation|annotation *"},
    {"include", "schemaLocation:uri!", "annotation ?"},
    {"import", "namespace:name schemaLocation:uri", "annotation ?"},
    {"redefine", "schemaLocation:uri!",
     "annotation|simpleType=namedSimpleType|complexType=namedComplexType|group=namedGroup|"
     "attributeGroup=namedAttributeGroup *"},
    {"annotation", "", "appinfo|documentation *"},
    {"appinfo", "source:uri", "any"},
    {"documentation", "source:uri", "any"},
    {"notation", "name:NCName! public:text system:uri", "annotation ?"},

    {"globalElement",
     "name:NCName! type:QName substitutionGroup:QName default:text fixed:text nillable:boolean "
     "abstract:boolean final:derivations block:elementBlock",
     "annotation ?; simpleType|complexType ?; unique|key|keyref *"},
    {"localElement",
     "name:NCName ref:QName minOccurs:count maxOccurs:max type:QName default:text fixed:text "
     "nillable:boolean block:elementBlock form:form",
     "annotation ?; simpleType|complexType ?; unique|key|keyref *"},
    {"allElement",
     "name:NCName ref:QName minOccurs:zeroOrOne maxOccurs:zeroOrOne type:QName default:text "
     "fixed:text nillable:boolean block:elementBlock form:form",
     "annotation ?; simpleType|complexType ?; unique|key|keyref *"},
    {"unique", "name:NCName!", "annotation ?; selector; field +"},
    {"key", "name:NCName!", "annotation ?; selector; field +"},
    {"keyref", "name:NCName! refer:QName!", "annotation ?; selector; field +"},
    {"selector", "xpath:text!", "annotation ?"},
    {"field", "xpath:text!", "annotation ?"},

    {"globalAttribute", "name:NCName! type:QName default:text fixed:text",
     "annotation ?; simpleType ?"},
    {"localAttribute", "name:NCName ref:QName type:QName use:use default:text fixed:text form:form",
     "annotation ?; simpleType ?"},
    {"namedAttributeGroup", "name:NCName!", "annotation ?; " QZXML_ATTRIBUTES},
    {"attributeGroupRef", "ref:QName!", "annotation ?"},
    {"anyAttribute", "namespace:wildcard processContents:process", "annotation ?"},

    {"namedGroup", "name:NCName!",
     "annotation ?; all=groupAll|choice=groupChoice|sequence=groupSequence"},
    {"groupRef", "ref:QName! minOccurs:count maxOccurs:max", "annotation ?"},
    {"all", "minOccurs:zeroOrOne maxOccurs:one", "annotation ?; element=allElement *"},
    {"groupAll", "", "annotation ?; element=allElement *"},
    {"choice", "minOccurs:count maxOccurs:max",
     "annotation ?; element=localElement|group=groupRef|choice|sequence|any *"},
    {"groupChoice", "", "annotation ?; element=localElement|group=groupRef|choice|sequence|any *"},
    {"sequence", "minOccurs:count maxOccurs:max",
     "annotation ?; element=localElement|group=groupRef|choice|sequence|any *"},
    {"groupSequence", "",
     "annotation ?; element=localElement|group=groupRef|choice|sequence|any *"},
    {"any", "namespace:wildcard processContents:process minOccurs:count maxOccurs:max",
     "annotation ?"},

    {"namedComplexType",
     "name:NCName! mixed:boolean abstract:boolean final:derivations block:derivations",
     "annotation ?; simpleContent|complexContent|group=groupRef|all|choice|sequence "
     "?; " QZXML_ATTRIBUTES},
    {"complexType", "mixed:boolean",
     "annotation ?; simpleContent|complexContent|group=groupRef|all|choice|sequence "
     "?; " QZXML_ATTRIBUTES},
    {"simpleContent", "",
     "annotation ?; restriction=simpleContentRestriction|extension=simpleContentExtension"},
    {"simpleContentRestriction", "base:QName!",
     "annotation ?; simpleType ?; " QZXML_FACETS "; " QZXML_ATTRIBUTES},
    {"simpleContentExtension", "base:QName!", "annotation ?; " QZXML_ATTRIBUTES},
    {"complexContent", "mixed:boolean",
     "annotation ?; restriction=complexRestriction|extension=complexExtension"},
    {"complexRestriction", "base:QName!", "annotation ?; " QZXML_PARTICLE "; " QZXML_ATTRIBUTES},
    {"complexExtension", "base:QName!", "annotation ?; " QZXML_PARTICLE "; " QZXML_ATTRIBUTES},

    {"namedSimpleType", "name:NCName! final:simpleFinal",
     "annotation ?; restriction=simpleRestriction|list|union"},
    {"simpleType", "", "annotation ?; restriction=simpleRestriction|list|union"},
    {"simpleRestriction", "base:QName", "annotation ?; simpleType ?; " QZXML_FACETS},
    {"list", "itemType:QName", "annotation ?; simpleType ?"},
    {"union", "memberTypes:QNames", "annotation ?; simpleType *"},
    {"facet", "value:text! fixed:boolean", "annotation ?"},
    {"openFacet", "value:text!", "annotation ?"},
    {"count", "value:count! fixed:boolean", "annotation ?"},
    {"digits", "value:positive! fixed:boolean", "annotation ?"},
    {"whiteSpace", "value:whiteSpace! fixed:boolean", "annotation ?"},
};

#undef QZXML_ATTRIBUTES
#undef QZXML_FACETS
#undef QZXML_PARTICLE

}  // namespace qzxml::generator

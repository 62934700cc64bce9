#include <gtest/gtest.h>

#include <string>

#include "tests/tools/schema/SchemaTrial.h"

// What is told of schemas that are wrong: each text whole, with its place. The place begins behind
// "/xs:schema"; the file is always the same.

using namespace qzxml::generator;
using qztest::SchemaTrial;

namespace {

struct ErrorCase {
  const char* body;
  const char* path;
  const char* message;
};

void ExpectErrors(const ErrorCase& c) {
  SchemaTrial trial;
  trial.ReadBody(c.body);
  EXPECT_EQ(std::string("t.xsd: /xs:schema") + c.path + ": " + c.message, trial.GetErrors())
      << c.body;
}

}  // namespace

TEST(SchemaErrors, OfTheFormOfTheDocument) {
  const ErrorCase cases[] = {
      {"<xs:elemnt name='e'/>", "/xs:elemnt[@name='e']",
       "The element 'xs:elemnt' is not allowed here."},
      {"<xs:sequence/>", "/xs:sequence", "The element 'xs:sequence' is not allowed here."},
      {"<order xmlns=''/>", "/order", "The element 'order' is not allowed here."},
      {"<xs:element name='e'/><xs:include schemaLocation='t.xsd'/>", "/xs:include",
       "The element 'xs:include' is not allowed here."},
      {"<xs:complexType name='T'><xs:attribute name='a'/><xs:sequence/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence", "The element 'xs:sequence' is not allowed here."},
      {"<xs:complexType name='T'><xs:simpleContent><xs:extension base='xs:int'/>"
       "</xs:simpleContent><xs:attribute name='a'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@name='a']",
       "The element 'xs:attribute' is not allowed here."},
      {"<xs:element name='e'><xs:annotation/><xs:annotation/></xs:element>",
       "/xs:element[@name='e']/xs:annotation[2]",
       "The element 'xs:annotation' is not allowed here."},
      {"<xs:simpleType name='S'/>", "/xs:simpleType[@name='S']",
       "The element 'list' or 'restriction' or 'union' is missing."},
      {"<xs:element name='e'><xs:key name='k'><xs:selector xpath='.'/></xs:key></xs:element>",
       "/xs:element[@name='e']/xs:key[@name='k']", "The element 'field' is missing."},
      {"<xs:element name='e' minOccurs='0'/>", "/xs:element[@name='e']",
       "The attribute 'minOccurs' is not allowed here."},
      {"<xs:element name='e' xs:type='xs:int'/>", "/xs:element[@name='e']",
       "The attribute 'type' stands without the namespace of XML Schema."},
      {"<xs:element type='xs:int'/>", "/xs:element", "The attribute 'name' is missing."},
      {"<xs:element name='a:b'/>", "/xs:element[@name='a:b']",
       "The value [a:b] of the attribute 'name' is not a name without colon."},
      {"<xs:element name='e' type='a b'/>", "/xs:element[@name='e']",
       "The value [a b] of the attribute 'type' is not a name with or without prefix."},
      {"<xs:simpleType name='S'><xs:union memberTypes='xs:int 1'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:union",
       "The value [xs:int 1] of the attribute 'memberTypes' is not names with or without prefix."},
      {"<xs:element name='e' nillable='yes'/>", "/xs:element[@name='e']",
       "The value [yes] of the attribute 'nillable' is not true, false, 1 or 0."},
      {"<xs:import namespace=''/>", "/xs:import",
       "The value [] of the attribute 'namespace' is not the name of a namespace, which is not "
       "empty."},
      {"<xs:complexType name='T'><xs:sequence minOccurs='-1'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence",
       "The value [-1] of the attribute 'minOccurs' is not a whole number that is not negative."},
      {"<xs:complexType name='T'><xs:sequence maxOccurs='many'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence",
       "The value [many] of the attribute 'maxOccurs' is not a whole number that is not negative, "
       "or unbounded."},
      {"<xs:complexType name='T'><xs:all maxOccurs='2'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:all",
       "The value [2] of the attribute 'maxOccurs' is not 1, for xs:all (cos-all-limited.1)."},
      {"<xs:complexType name='T'><xs:all><xs:element name='a' maxOccurs='2'/></xs:all>"
       "</xs:complexType>",
       "/xs:complexType[@name='T']/xs:all/xs:element[@name='a']",
       "The value [2] of the attribute 'maxOccurs' is not 0 or 1, for xs:all "
       "(cos-all-limited.2)."},
      {"<xs:complexType name='T'><xs:attribute name='a' form='yes'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@name='a']",
       "The value [yes] of the attribute 'form' is not qualified or unqualified."},
      {"<xs:complexType name='T'><xs:attribute name='a' use='yes'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@name='a']",
       "The value [yes] of the attribute 'use' is not optional, required or prohibited."},
      {"<xs:complexType name='T'><xs:anyAttribute processContents='no'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:anyAttribute",
       "The value [no] of the attribute 'processContents' is not strict, lax or skip."},
      {"<xs:complexType name='T'><xs:anyAttribute namespace='##any urn:a'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:anyAttribute",
       "The value [##any urn:a] of the attribute 'namespace' is not ##any, ##other, or a list of "
       "URIs, ##targetNamespace and ##local."},
      {"<xs:complexType name='T' final='list'/>", "/xs:complexType[@name='T']",
       "The value [list] of the attribute 'final' is not #all, or a list of extension and "
       "restriction."},
      {"<xs:element name='e' block='list'/>", "/xs:element[@name='e']",
       "The value [list] of the attribute 'block' is not #all, or a list of extension, "
       "restriction and substitution."},
      {"<xs:simpleType name='S' final='extension'><xs:list itemType='xs:int'/></xs:simpleType>",
       "/xs:simpleType[@name='S']",
       "The value [extension] of the attribute 'final' is not #all, or a list of restriction, "
       "list and union."},
      {"<xs:simpleType name='S'><xs:restriction base='xs:string'><xs:whiteSpace value='keep'/>"
       "</xs:restriction></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction/xs:whiteSpace",
       "The value [keep] of the attribute 'value' is not preserve, replace or collapse."},
      {"<xs:simpleType name='S'><xs:restriction base='xs:int'><xs:totalDigits value='0'/>"
       "</xs:restriction></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction/xs:totalDigits",
       "The value [0] of the attribute 'value' is not a whole number above 0."},
      {"<xs:element name='e'>text</xs:element>", "/xs:element[@name='e']",
       "There is text, which stands only in xs:documentation and xs:appinfo."},
      {"<xs:element name='e' id='i'/><xs:element name='f' id='i'/>", "/xs:element[@name='f']",
       "The id 'i' is there more than once."},
      {"<xs:annotation><xs:documentation xml:lang='_'/></xs:annotation><xs:annotation "
       "xml:lang='_'/>",
       "/xs:annotation[1]/xs:documentation",
       "The value [_] of the attribute 'xml:lang' is not a language.\n"
       "t.xsd: /xs:schema/xs:annotation[2]: The value [_] of the attribute 'xml:lang' is not a "
       "language."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfTheSchemaElement) {
  const struct {
    const char* attributes;
    const char* message;
  } cases[] = {
      {"finalDefault='all'",
       "The value [all] of the attribute 'finalDefault' is not #all, or a list of extension, "
       "restriction, list and union."},
      {"targetNamespace=''",
       "The value [] of the attribute 'targetNamespace' is not the name of a namespace, which is "
       "not empty."},
      {"source='x'", "The attribute 'source' is not allowed here."},
  };
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.File("t.xsd", std::string("<schema xmlns='http://www.w3.org/2001/XMLSchema' ") +
                            c.attributes + "/>");
    trial.Read({"t.xsd"});
    EXPECT_EQ(std::string("t.xsd: /schema: ") + c.message, trial.GetErrors());
  }
}

TEST(SchemaErrors, OfNames) {
  const ErrorCase cases[] = {
      {"<xs:element name='e' type='T'/>", "/xs:element[@name='e']",
       "There is no type '{urn:t}T' (src-resolve)."},
      {"<xs:complexType name='T'><xs:sequence><xs:element ref='e'/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence/xs:element[@ref='e']",
       "There is no element '{urn:t}e' (src-resolve)."},
      {"<xs:complexType name='T'><xs:attribute ref='a'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@ref='a']",
       "There is no attribute '{urn:t}a' (src-resolve)."},
      {"<xs:complexType name='T'><xs:group ref='g'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:group[@ref='g']",
       "There is no group '{urn:t}g' (src-resolve)."},
      {"<xs:complexType name='T'><xs:attributeGroup ref='g'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attributeGroup[@ref='g']",
       "There is no attribute group '{urn:t}g' (src-resolve)."},
      {"<xs:element name='e'><xs:keyref name='k' refer='x'><xs:selector xpath='.'/>"
       "<xs:field xpath='.'/></xs:keyref></xs:element>",
       "/xs:element[@name='e']/xs:keyref[@name='k']",
       "There is no identity constraint '{urn:t}x' (src-resolve)."},
      {"<xs:simpleType name='S'><xs:restriction base='xs:NOTATION'><xs:enumeration value='gif'/>"
       "</xs:restriction></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction/xs:enumeration",
       "There is no notation '{urn:t}gif' (src-resolve)."},
      {"<xs:complexType name='T'/><xs:simpleType name='T'><xs:list itemType='xs:int'/>"
       "</xs:simpleType>",
       "/xs:simpleType[@name='T']", "There are two of the name '{urn:t}T' (sch-props-correct.2)."},
      {"<xs:notation name='n'/>", "/xs:notation[@name='n']",
       "A notation has a public or a system identifier."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfSimpleTypes) {
  const ErrorCase cases[] = {
      {"<xs:simpleType name='S'><xs:restriction/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction",
       "There has to be either the attribute 'base' or a simpleType "
       "(src-restriction-base-or-simpleType)."},
      {"<xs:simpleType name='S'><xs:list itemType='xs:int'><xs:simpleType>"
       "<xs:restriction base='xs:int'/></xs:simpleType></xs:list></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:list",
       "There has to be either the attribute 'itemType' or a simpleType "
       "(src-list-itemType-or-simpleType)."},
      {"<xs:simpleType name='S'><xs:union/></xs:simpleType>", "/xs:simpleType[@name='S']/xs:union",
       "A union has member types (src-union-memberTypes-or-simpleTypes)."},
      {"<xs:complexType name='C'/><xs:simpleType name='S'><xs:restriction base='C'/>"
       "</xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction",
       "The type '{urn:t}C' is complex, where a simple type is needed (src-resolve)."},
      {"<xs:simpleType name='S'><xs:restriction base='R'/></xs:simpleType>"
       "<xs:simpleType name='R'><xs:restriction base='S'/></xs:simpleType>",
       "/xs:simpleType[@name='R']/xs:restriction",
       "The type '{urn:t}S' is defined by means of itself (st-props-correct.2)."},
      {"<xs:simpleType name='S'><xs:union memberTypes='xs:int S'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:union",
       "The type '{urn:t}S' is defined by means of itself (st-props-correct.2)."},
      {"<xs:simpleType name='S'><xs:restriction base='xs:anySimpleType'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction",
       "The type 'anySimpleType' is not restricted by schemas (cos-st-restricts.1.1)."},
      {"<xs:simpleType name='F' final='#all'><xs:restriction base='xs:int'/></xs:simpleType>"
       "<xs:simpleType name='S'><xs:restriction base='F'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:restriction",
       "The type '{urn:t}F' is final for this kind of derivation (st-props-correct.3)."},
      {"<xs:simpleType name='F' final='list'><xs:restriction base='xs:int'/></xs:simpleType>"
       "<xs:simpleType name='S'><xs:list itemType='F'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:list",
       "The type '{urn:t}F' is final for this kind of derivation (cos-st-restricts.2.3.1.1)."},
      {"<xs:simpleType name='F' final='union'><xs:restriction base='xs:int'/></xs:simpleType>"
       "<xs:simpleType name='S'><xs:union memberTypes='F'/></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:union",
       "The type '{urn:t}F' is final for this kind of derivation (cos-st-restricts.3.3.1.1)."},
      {"<xs:simpleType name='S'><xs:list><xs:simpleType><xs:union memberTypes='xs:int "
       "xs:NMTOKENS'/>"
       "</xs:simpleType></xs:list></xs:simpleType>",
       "/xs:simpleType[@name='S']/xs:list",
       "The items of a list are no lists (cos-st-restricts.2.1)."},
      {"<xs:element name='e' type='xs:NOTATION'/>", "/xs:element[@name='e']",
       "The type NOTATION is used by way of enumerations of its values "
       "(enumeration-required-notation)."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfFacets) {
  const struct {
    const char* base;
    const char* facets;
    const char* place;
    const char* message;
  } cases[] = {
      {"xs:string", "<xs:pattern value='a**'/>", "xs:pattern",
       "The value [a**] is no regular expression: '*' has nothing in front of it that it could "
       "repeat"},
      {"xs:boolean", "<xs:enumeration value='true'/>", "xs:enumeration",
       "The facet 'enumeration' is not for the type "
       "'{http://www.w3.org/2001/XMLSchema}boolean' (cos-applicable-facets)."},
      {"xs:string", "<xs:totalDigits value='3'/>", "xs:totalDigits",
       "The facet 'totalDigits' is not for the type '{http://www.w3.org/2001/XMLSchema}string' "
       "(cos-applicable-facets)."},
      {"xs:IDREFS", "<xs:minInclusive value='3'/>", "xs:minInclusive",
       "The facet 'minInclusive' is not for the type '{http://www.w3.org/2001/XMLSchema}IDREFS' "
       "(cos-applicable-facets)."},
      {"U", "<xs:length value='3'/>", "xs:length",
       "The facet 'length' is not for the type '{urn:t}U' (cos-applicable-facets)."},
      {"xs:int", "<xs:enumeration value='x'/>", "xs:enumeration",
       "The value [x] is not of the type '{http://www.w3.org/2001/XMLSchema}int', which is "
       "restricted (enumeration-valid-restriction)."},
      {"Max5", "<xs:enumeration value='6'/>", "xs:enumeration",
       "The value [6] is not of the type '{urn:t}Max5', which is restricted "
       "(enumeration-valid-restriction)."},
      {"xs:string", "<xs:length value='1'/><xs:length value='1'/>", "xs:length[2]",
       "The facet 'length' is there twice (src-single-facet-value)."},
      {"xs:int", "<xs:minInclusive value='1.5'/>", "xs:minInclusive",
       "The value [1.5] is not of the type '{http://www.w3.org/2001/XMLSchema}int', which is "
       "restricted."},
      {"xs:int", "<xs:fractionDigits value='1'/>", "xs:fractionDigits",
       "The facet 'fractionDigits' with the value [1] changes the fixed value [0] of the base "
       "(facet-fixed).\n"
       "t.xsd: /xs:schema/xs:simpleType[@name='S']/xs:restriction/xs:fractionDigits: The facet "
       "'fractionDigits' with the value [1] is above the fractionDigits of the base [0] "
       "(fractionDigits-valid-restriction)."},
      {"Length3", "<xs:length value='2'/>", "xs:length",
       "The facet 'length' with the value [2] is not the length [3] of the base "
       "(length-valid-restriction)."},
      {"Length3", "<xs:minLength value='4'/>", "xs:minLength",
       "The facet 'minLength' with the value [4] is above the length of the base [3] "
       "(length-minLength-maxLength)."},
      {"Length2to4", "<xs:minLength value='1'/>", "xs:minLength",
       "The facet 'minLength' with the value [1] is below the minLength of the base [2] "
       "(minLength-valid-restriction)."},
      {"Length2to4", "<xs:maxLength value='5'/>", "xs:maxLength",
       "The facet 'maxLength' with the value [5] is above the maxLength of the base [4] "
       "(maxLength-valid-restriction)."},
      {"Length2to4", "<xs:length value='5'/>", "xs:length",
       "The facet 'length' with the value [5] is above the maxLength [4] "
       "(length-minLength-maxLength)."},
      {"Length2to4", "<xs:length value='1'/>", "xs:length",
       "The facet 'length' with the value [1] is below the minLength [2] "
       "(length-minLength-maxLength)."},
      {"xs:string", "<xs:length value='3'/><xs:maxLength value='3'/>", "xs:maxLength",
       "The facet 'maxLength' with the value [3] stands beside the facet 'length' "
       "(length-minLength-maxLength)."},
      {"Length2to4", "<xs:minLength value='5'/>", "xs:minLength",
       "The facet 'minLength' with the value [5] is above the maxLength [4] "
       "(minLength-less-than-equal-to-maxLength)."},
      {"Length2to4", "<xs:maxLength value='1'/>", "xs:maxLength",
       "The facet 'maxLength' with the value [1] is below the minLength [2] "
       "(minLength-less-than-equal-to-maxLength)."},
      {"xs:decimal", "<xs:totalDigits value='2'/><xs:fractionDigits value='3'/>",
       "xs:fractionDigits",
       "The facet 'fractionDigits' with the value [3] is above the totalDigits [2] "
       "(fractionDigits-totalDigits).\n"
       "t.xsd: /xs:schema/xs:simpleType[@name='S']/xs:restriction/xs:totalDigits: The facet "
       "'totalDigits' with the value [2] is below the fractionDigits [3] "
       "(fractionDigits-totalDigits)."},
      {"xs:token", "<xs:whiteSpace value='replace'/>", "xs:whiteSpace",
       "The facet 'whiteSpace' with the value [replace] is weaker than [collapse] of the base "
       "(whiteSpace-valid-restriction)."},
      {"xs:int", "<xs:minInclusive value='1'/><xs:minExclusive value='1'/>", "xs:minExclusive",
       "The facet 'minExclusive' with the value [1] stands beside the facet 'minInclusive' "
       "(minInclusive-minExclusive)."},
      {"xs:int", "<xs:maxInclusive value='1'/><xs:maxExclusive value='1'/>", "xs:maxExclusive",
       "The facet 'maxExclusive' with the value [1] stands beside the facet 'maxInclusive' "
       "(maxInclusive-maxExclusive)."},
      {"xs:int", "<xs:minInclusive value='2'/><xs:maxInclusive value='1'/>", "xs:minInclusive",
       "The facet 'minInclusive' with the value [2] is above the facet 'maxInclusive' [1] "
       "(minInclusive-less-than-equal-to-maxInclusive)."},
      {"xs:int", "<xs:minInclusive value='2'/><xs:maxExclusive value='2'/>", "xs:minInclusive",
       "The facet 'minInclusive' with the value [2] is above the facet 'maxExclusive' [2] "
       "(minInclusive-less-than-equal-to-maxInclusive)."},
      {"Max5", "<xs:maxInclusive value='6'/>", "xs:maxInclusive",
       "The facet 'maxInclusive' with the value [6] is outside of the base's upper bound [5] "
       "(maxInclusive-valid-restriction)."},
      {"Max5", "<xs:minExclusive value='6'/>", "xs:minExclusive",
       "The facet 'minExclusive' with the value [6] is outside of the base's upper bound [5] "
       "(minExclusive-valid-restriction)."},
      {"xs:unsignedByte", "<xs:minInclusive value='-1'/>", "xs:minInclusive",
       "The value [-1] is not of the type '{http://www.w3.org/2001/XMLSchema}unsignedByte', which "
       "is restricted."},
      {"Below5", "<xs:minInclusive value='5'/>", "xs:minInclusive",
       "The facet 'minInclusive' with the value [5] is outside of the base's upper bound [5] "
       "(minInclusive-valid-restriction)."},
      {"Above5", "<xs:maxExclusive value='5'/>", "xs:maxExclusive",
       "The facet 'maxExclusive' with the value [5] is outside of the base's lower bound [5] "
       "(maxExclusive-valid-restriction)."},
      {"FixedMax5", "<xs:maxInclusive value='4'/>", "xs:maxInclusive",
       "The facet 'maxInclusive' with the value [4] changes the fixed value [5] of the base "
       "(facet-fixed)."},
  };
  const std::string helpers =
      "<xs:simpleType name='U'><xs:union memberTypes='xs:int xs:token'/></xs:simpleType>"
      "<xs:simpleType name='Max5'><xs:restriction base='xs:int'><xs:maxInclusive value='5'/>"
      "</xs:restriction></xs:simpleType>"
      "<xs:simpleType name='FixedMax5'><xs:restriction base='xs:int'>"
      "<xs:maxInclusive value='5' fixed='true'/></xs:restriction></xs:simpleType>"
      "<xs:simpleType name='Below5'><xs:restriction base='xs:int'><xs:maxExclusive value='5'/>"
      "</xs:restriction></xs:simpleType>"
      "<xs:simpleType name='Above5'><xs:restriction base='xs:int'><xs:minExclusive value='5'/>"
      "</xs:restriction></xs:simpleType>"
      "<xs:simpleType name='Length3'><xs:restriction base='xs:string'><xs:length value='3'/>"
      "</xs:restriction></xs:simpleType>"
      "<xs:simpleType name='Length2to4'><xs:restriction base='xs:string'><xs:minLength value='2'/>"
      "<xs:maxLength value='4'/></xs:restriction></xs:simpleType>";
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.ReadBody("<xs:simpleType name='S'><xs:restriction base='" + std::string(c.base) + "'>" +
                   c.facets + "</xs:restriction></xs:simpleType>" + helpers);
    EXPECT_EQ(std::string("t.xsd: /xs:schema/xs:simpleType[@name='S']/xs:restriction/") + c.place +
                  ": " + c.message,
              trial.GetErrors())
        << c.facets;
  }
}

TEST(SchemaErrors, OfAttributes) {
  const ErrorCase cases[] = {
      {"<xs:attribute name='a' type='xs:int'><xs:simpleType><xs:restriction base='xs:int'/>"
       "</xs:simpleType></xs:attribute>",
       "/xs:attribute[@name='a']",
       "There are both the attribute 'type' and a simpleType (src-attribute.4)."},
      {"<xs:attribute name='xmlns'/>", "/xs:attribute[@name='xmlns']",
       "No attribute is declared that is called 'xmlns' (no-xmlns)."},
      {"<xs:attribute name='a' default='1' fixed='1'/>", "/xs:attribute[@name='a']",
       "There are both a default and a fixed value (src-attribute.1)."},
      {"<xs:attribute name='a' type='xs:ID' default='x'/>", "/xs:attribute[@name='a']",
       "What is of the type ID has neither a default nor a fixed value (a-props-correct.3)."},
      {"<xs:attribute name='a' type='xs:int' default='x'/>", "/xs:attribute[@name='a']",
       "The value [x] is not of the type '{http://www.w3.org/2001/XMLSchema}int' "
       "(cos-valid-default)."},
      {"<xs:complexType name='T'><xs:attribute/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute",
       "An attribute has either a name or a ref (src-attribute.3.1)."},
      {"<xs:attribute name='a'/><xs:complexType name='T'><xs:attribute ref='a' type='xs:int'/>"
       "</xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@ref='a']",
       "A reference to an attribute has no type and no form (src-attribute.3.2)."},
      {"<xs:complexType name='T'><xs:attribute name='a' use='required' default='1'/>"
       "</xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@name='a']",
       "An attribute that has a default value is optional (src-attribute.2)."},
      {"<xs:attribute name='a' type='xs:int' fixed='5'/><xs:complexType name='T'>"
       "<xs:attribute ref='a' fixed='6'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:attribute[@ref='a']",
       "The attribute is declared with the fixed value [5], which a use keeps "
       "(au-props-correct.2)."},
      {"<xs:complexType name='T'><xs:attribute name='a'/><xs:attribute name='a'/></xs:complexType>",
       "/xs:complexType[@name='T']", "The attribute 'a' is there twice (ct-props-correct.4)."},
      {"<xs:complexType name='T'><xs:attribute name='a' type='xs:ID'/>"
       "<xs:attribute name='b' type='xs:ID'/></xs:complexType>",
       "/xs:complexType[@name='T']",
       "The attributes 'a' and 'b' are both of the type ID (ct-props-correct.5)."},
      {"<xs:attributeGroup name='A'><xs:attributeGroup ref='B'/></xs:attributeGroup>"
       "<xs:attributeGroup name='B'><xs:attributeGroup ref='A'/></xs:attributeGroup>",
       "/xs:attributeGroup[@name='B']/xs:attributeGroup[@ref='A']",
       "The attribute group '{urn:t}A' refers to itself (src-attribute_group.3)."},
      {"<xs:complexType name='B'><xs:anyAttribute namespace='##local'/></xs:complexType>"
       "<xs:complexType name='T'><xs:complexContent><xs:extension base='B'>"
       "<xs:anyAttribute namespace='##other'/></xs:extension></xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "The union of the wildcard for attributes with that of the base can not be expressed "
       "(src-ct.5)."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfAttributesInTheNamespaceOfInstances) {
  SchemaTrial trial;
  trial.File("t.xsd",
             "<schema xmlns='http://www.w3.org/2001/XMLSchema' "
             "targetNamespace='http://www.w3.org/2001/XMLSchema-instance'>"
             "<attribute name='a'/></schema>");
  trial.Read({"t.xsd"});
  EXPECT_EQ(
      "t.xsd: /schema/attribute[@name='a']: No attribute is declared in the namespace of "
      "schema instances (no-xsi).",
      trial.GetErrors());
}

TEST(SchemaErrors, OfTwoNamespacesWhoseWildcardsDoNotMeet) {
  SchemaTrial trial;
  trial.File("o.xsd",
             "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
             "targetNamespace='urn:o'><xs:attributeGroup name='A'>"
             "<xs:anyAttribute namespace='##other'/></xs:attributeGroup></xs:schema>");
  trial.ReadBody(
      "<xs:import namespace='urn:o' schemaLocation='o.xsd'/><xs:complexType name='T'>"
      "<xs:attributeGroup ref='o:A' xmlns:o='urn:o'/>"
      "<xs:anyAttribute namespace='##other'/></xs:complexType>");
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:complexType[@name='T']: The intersection of the wildcards for "
      "attributes can not be expressed (src-ct.4).",
      trial.GetErrors());
}

TEST(SchemaErrors, OfElements) {
  const ErrorCase cases[] = {
      {"<xs:element name='e' type='xs:int'><xs:complexType/></xs:element>",
       "/xs:element[@name='e']", "There are both the attribute 'type' and a type (src-element.3)."},
      {"<xs:element name='e' default='1' fixed='1'/>", "/xs:element[@name='e']",
       "There are both a default and a fixed value (src-element.1)."},
      {"<xs:complexType name='T'><xs:sequence><xs:element/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence/xs:element",
       "An element has either a name or a ref (src-element.2.1)."},
      {"<xs:element name='e'/><xs:complexType name='T'><xs:sequence>"
       "<xs:element ref='e' nillable='true'/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence/xs:element[@ref='e']",
       "A reference to an element has no attribute 'nillable' (src-element.2.2)."},
      {"<xs:element name='e'/><xs:complexType name='T'><xs:sequence><xs:element ref='e'>"
       "<xs:complexType/></xs:element></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence/xs:element[@ref='e']",
       "A reference to an element has no content but an annotation (src-element.2.2)."},
      {"<xs:element name='e' type='xs:ID' fixed='x'/>", "/xs:element[@name='e']",
       "What is of the type ID has neither a default nor a fixed value (e-props-correct.5)."},
      {"<xs:element name='e' default='x'><xs:complexType/></xs:element>", "/xs:element[@name='e']",
       "A default or fixed value needs simple or mixed content (cos-valid-default.2.1)."},
      {"<xs:element name='e' default='x'><xs:complexType mixed='true'><xs:sequence>"
       "<xs:element name='a'/></xs:sequence></xs:complexType></xs:element>",
       "/xs:element[@name='e']",
       "A default or fixed value needs content that may be without elements "
       "(cos-valid-default.2.2.2)."},
      {"<xs:element name='e' substitutionGroup='f'/><xs:element name='f' substitutionGroup='e'/>",
       "/xs:element[@name='f']",
       "The element '{urn:t}f' may be substituted by itself (e-props-correct.6)."},
      {"<xs:element name='h' type='xs:int'/><xs:element name='e' type='xs:string' "
       "substitutionGroup='h'/>",
       "/xs:element[@name='e']",
       "The type '{http://www.w3.org/2001/XMLSchema}string' is not derived from the type "
       "'{http://www.w3.org/2001/XMLSchema}int' of the element '{urn:t}h', which it may stand for "
       "(e-props-correct.4)."},
      {"<xs:element name='h' type='xs:int' final='restriction'/><xs:element name='e' "
       "type='xs:short' substitutionGroup='h'/>",
       "/xs:element[@name='e']",
       "The element '{urn:t}h' is final for the derivation of this one's type "
       "(e-props-correct.4)."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfGroups) {
  const ErrorCase cases[] = {
      {"<xs:complexType name='T'><xs:sequence minOccurs='3' maxOccurs='2'>"
       "<xs:element name='a'/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence",
       "minOccurs is above maxOccurs (p-props-correct.2.1)."},
      {"<xs:group name='G'><xs:sequence><xs:group ref='H'/></xs:sequence></xs:group>"
       "<xs:group name='H'><xs:choice><xs:sequence><xs:group ref='G'/></xs:sequence></xs:choice>"
       "</xs:group>",
       "/xs:group[@name='H']/xs:choice/xs:sequence/xs:group[@ref='G']",
       "The group '{urn:t}G' holds itself (mg-props-correct.2)."},
      {"<xs:group name='A'><xs:all><xs:element name='a'/></xs:all></xs:group>"
       "<xs:complexType name='T'><xs:sequence><xs:group ref='A'/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']/xs:sequence/xs:group[@ref='A']",
       "A group of xs:all is the whole content of a type (cos-all-limited.1)."},
      {"<xs:group name='A'><xs:all><xs:element name='a'/></xs:all></xs:group>"
       "<xs:complexType name='T'><xs:group ref='A' maxOccurs='2'/></xs:complexType>",
       "/xs:complexType[@name='T']/xs:group[@ref='A']",
       "A group of xs:all is there once at most (cos-all-limited.1.2)."},
      {"<xs:complexType name='T'><xs:sequence><xs:element name='a' minOccurs='0'/>"
       "<xs:element name='a'/></xs:sequence></xs:complexType>",
       "/xs:complexType[@name='T']",
       "The content model is ambiguous: '{urn:t}a' and '{urn:t}a' may take the same element "
       "(cos-nonambig)."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfComplexTypes) {
  const ErrorCase cases[] = {
      {"<xs:complexType name='A'><xs:complexContent><xs:extension base='B'/></xs:complexContent>"
       "</xs:complexType><xs:complexType name='B'><xs:complexContent><xs:extension base='A'/>"
       "</xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='B']/xs:complexContent/xs:extension",
       "The type '{urn:t}A' is derived from itself (ct-props-correct.3)."},
      {"<xs:complexType name='F' final='extension'/><xs:complexType name='T'><xs:complexContent>"
       "<xs:extension base='F'/></xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "The type '{urn:t}F' is final for this kind of derivation (cos-ct-extends.1.1)."},
      {"<xs:complexType name='F' final='restriction'/><xs:complexType name='T'><xs:complexContent>"
       "<xs:restriction base='F'/></xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:restriction",
       "The type '{urn:t}F' is final for this kind of derivation (derivation-ok-restriction.1)."},
      {"<xs:complexType name='E'/><xs:complexType name='T'><xs:simpleContent>"
       "<xs:extension base='E'/></xs:simpleContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:simpleContent/xs:extension",
       "The type '{urn:t}E' has no simple content that could be extended (src-ct.2)."},
      {"<xs:complexType name='E'/><xs:complexType name='T'><xs:simpleContent>"
       "<xs:restriction base='E'/></xs:simpleContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:simpleContent/xs:restriction",
       "The type '{urn:t}E' has no simple content that could be restricted (src-ct.2)."},
      {"<xs:complexType name='T'><xs:simpleContent><xs:restriction base='xs:int'/>"
       "</xs:simpleContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:simpleContent/xs:restriction",
       "The type '{http://www.w3.org/2001/XMLSchema}int' is simple: only complex types are "
       "restricted here (src-ct.2)."},
      {"<xs:complexType name='T'><xs:complexContent><xs:extension base='xs:int'/>"
       "</xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "The type '{http://www.w3.org/2001/XMLSchema}int' is simple, where a complex one is needed "
       "(src-ct.1)."},
      {"<xs:complexType name='S'><xs:simpleContent><xs:extension base='xs:int'/></xs:simpleContent>"
       "</xs:complexType><xs:complexType name='T'><xs:complexContent><xs:extension base='S'>"
       "<xs:sequence><xs:element name='a'/></xs:sequence></xs:extension></xs:complexContent>"
       "</xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "The type '{urn:t}S' has simple content, which is not extended by elements "
       "(cos-ct-extends.1.4)."},
      {"<xs:complexType name='M' mixed='true'/><xs:complexType name='T'><xs:complexContent>"
       "<xs:extension base='M'><xs:sequence><xs:element name='a'/></xs:sequence></xs:extension>"
       "</xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "Of the base and its extension one is mixed and the other is not (cos-ct-extends.1.4)."},
      {"<xs:complexType name='A'><xs:all><xs:element name='a'/></xs:all></xs:complexType>"
       "<xs:complexType name='T'><xs:complexContent><xs:extension base='A'><xs:sequence>"
       "<xs:element name='b'/></xs:sequence></xs:extension></xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:complexContent/xs:extension",
       "Content of xs:all is neither extended nor an extension of other content "
       "(cos-all-limited.1)."},
      {"<xs:complexType name='S'><xs:simpleContent><xs:extension base='xs:int'/></xs:simpleContent>"
       "</xs:complexType><xs:complexType name='T'><xs:simpleContent><xs:restriction base='S'>"
       "<xs:simpleType><xs:restriction base='xs:string'/></xs:simpleType></xs:restriction>"
       "</xs:simpleContent></xs:complexType>",
       "/xs:complexType[@name='T']/xs:simpleContent/xs:restriction/xs:simpleType",
       "The type is not derived from the type '{http://www.w3.org/2001/XMLSchema}int', the content "
       "of the base (derivation-ok-restriction.5.1)."},
  };
  for (const ErrorCase& c : cases) ExpectErrors(c);
}

TEST(SchemaErrors, OfPathsOfIdentityConstraints) {
  const struct {
    const char* element;
    const char* path;
    const char* message;
  } cases[] = {
      {"selector", "a[1]",
       "The path [a[1]] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "@a",
       "The path [@a] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "a//b",
       "The path [a//b] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "/a",
       "The path [/a] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "",
       "The path [] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "a|",
       "The path [a|] is not of the part of XPath that is allowed here (c-selector-xpath)."},
      {"selector", "q:a", "The prefix 'q' of the path [q:a] is not declared (c-selector-xpath)."},
      {"field", "@a/b",
       "The path [@a/b] is not of the part of XPath that is allowed here (c-fields-xpaths)."},
      {"field", "..",
       "The path [..] is not of the part of XPath that is allowed here (c-fields-xpaths)."},
      {"field", "parent::a",
       "The path [parent::a] is not of the part of XPath that is allowed here (c-fields-xpaths)."},
      {"field", "q:*", "The prefix 'q' of the path [q:*] is not declared (c-fields-xpaths)."},
  };
  for (const auto& c : cases) {
    const bool isField = std::string(c.element) == "field";
    SchemaTrial trial;
    trial.ReadBody(std::string("<xs:element name='e'><xs:unique name='u'><xs:selector xpath='") +
                   (isField ? "." : c.path) + "'/><xs:field xpath='" + (isField ? c.path : ".") +
                   "'/></xs:unique></xs:element>");
    EXPECT_EQ(std::string("t.xsd: /xs:schema/xs:element[@name='e']/xs:unique[@name='u']/xs:") +
                  c.element + ": " + c.message,
              trial.GetErrors());
  }
}

TEST(SchemaErrors, OfKeyrefs) {
  const std::string key =
      "<xs:element name='e'><xs:key name='k'><xs:selector xpath='.'/><xs:field xpath='a'/></xs:key>"
      "<xs:keyref name='r' refer='k'><xs:selector xpath='.'/><xs:field xpath='a'/></xs:keyref>";
  SchemaTrial trial;
  trial.ReadBody(key +
                 "<xs:keyref name='s' refer='r'><xs:selector xpath='.'/>"
                 "<xs:field xpath='a'/></xs:keyref></xs:element>");
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:element[@name='e']/xs:keyref[@name='s']: A keyref refers to a "
      "key or a unique (c-props-correct.1).",
      trial.GetErrors());
  trial.ReadBody(key +
                 "<xs:keyref name='s' refer='k'><xs:selector xpath='.'/>"
                 "<xs:field xpath='a'/><xs:field xpath='b'/></xs:keyref></xs:element>");
  EXPECT_EQ(
      "t.xsd: /xs:schema/xs:element[@name='e']/xs:keyref[@name='s']: A keyref has as many "
      "fields as the constraint that it refers to (c-props-correct.2).",
      trial.GetErrors());
}

TEST(SchemaErrors, OfRedefinitions) {
  const struct {
    const char* body;
    const char* place;
    const char* message;
  } cases[] = {
      {"<xs:complexType name='X'><xs:complexContent><xs:extension base='X'/></xs:complexContent>"
       "</xs:complexType>",
       "/xs:complexType[@name='X']",
       "There is no '{urn:t}X' in the schema that is redefined (src-redefine)."},
      {"<xs:complexType name='C'><xs:complexContent><xs:extension base='D'/></xs:complexContent>"
       "</xs:complexType>",
       "/xs:complexType[@name='C']", "A redefined type derives from itself (src-redefine.5)."},
      {"<xs:simpleType name='S'><xs:restriction base='xs:int'/></xs:simpleType>",
       "/xs:simpleType[@name='S']", "A redefined type derives from itself (src-redefine.5)."},
      {"<xs:group name='G'><xs:sequence><xs:group ref='G'/><xs:group ref='G'/></xs:sequence>"
       "</xs:group>",
       "/xs:group[@name='G']",
       "A redefined group refers to itself once at most (src-redefine.6.1.1)."},
      {"<xs:group name='G'><xs:sequence><xs:group ref='G' minOccurs='0'/></xs:sequence></xs:group>",
       "/xs:group[@name='G']/xs:sequence/xs:group[@ref='G']",
       "A redefined group refers to itself for one occurrence (src-redefine.6.1.2)."},
      {"<xs:group name='G'><xs:sequence><xs:element name='h'/></xs:sequence></xs:group>",
       "/xs:group[@name='G']",
       "The redefined group does not restrict the former one: the element 'h' stands where the "
       "base has the element 'g' (src-redefine.6.2.2)."},
      {"<xs:attributeGroup name='A'><xs:attributeGroup ref='A'/><xs:attributeGroup ref='A'/>"
       "</xs:attributeGroup>",
       "/xs:attributeGroup[@name='A']",
       "The attribute 'a' is there twice (ct-props-correct.4).\n"
       "t.xsd: /xs:schema/xs:redefine/xs:attributeGroup[@name='A']: A redefined attribute group "
       "refers to itself once at most (src-redefine.7.1)."},
      {"<xs:attributeGroup name='A'><xs:attribute name='b'/></xs:attributeGroup>",
       "/xs:attributeGroup[@name='A']",
       "The attribute 'b' is not in the base (derivation-ok-restriction.2.2)."},
      {"<xs:complexType name='C'><xs:complexContent><xs:extension base='C'/></xs:complexContent>"
       "</xs:complexType><xs:complexType name='C'><xs:complexContent><xs:extension base='C'/>"
       "</xs:complexContent></xs:complexType>",
       "/xs:complexType[@name='C']", "'{urn:t}C' is redefined twice (sch-props-correct.2)."},
  };
  for (const auto& c : cases) {
    SchemaTrial trial;
    trial.File("r.xsd",
               "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
               "<xs:complexType name='C'/><xs:complexType name='D'/>"
               "<xs:simpleType name='S'><xs:restriction base='xs:int'/></xs:simpleType>"
               "<xs:group name='G'><xs:sequence><xs:element name='g'/></xs:sequence>"
               "</xs:group><xs:attributeGroup name='A'><xs:attribute name='a'/>"
               "</xs:attributeGroup></xs:schema>");
    trial.File("t.xsd", std::string("<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                                    "xmlns='urn:t' targetNamespace='urn:t'>"
                                    "<xs:redefine schemaLocation='r.xsd'>") +
                            c.body + "</xs:redefine></xs:schema>");
    trial.Read({"t.xsd"});
    EXPECT_EQ(std::string("t.xsd: /xs:schema/xs:redefine") + c.place + ": " + c.message,
              trial.GetErrors());
  }
}

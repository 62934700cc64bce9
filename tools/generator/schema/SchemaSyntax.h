#pragma once

namespace qzxml::generator {

class CDiagnostics;
struct SchemaNode;

// Checks the form of a schema: which elements stand where and how often, which attributes they have
// and what these hold, that there is no text, that an id is there once. References are not looked
// at. Answers whether the elements stand as they have to, so that components can be made of them;
// every fault is told as an error.
// Source: XML Schema 1.0 part 1, appendix A, and part 2, appendix A.
bool CheckSyntax(const SchemaNode& schema, CDiagnostics& diagnostics);

}  // namespace qzxml::generator

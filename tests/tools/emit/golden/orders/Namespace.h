// Made by qzxml generate from order.xsd.
#pragma once

namespace orders {

// The namespace of the schema.
inline constexpr char kNamespace[] = "urn:example:order";

}  // namespace orders

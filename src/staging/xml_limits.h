// What a description may ask of the parser. The parse ends at the first thing
// beyond, as at an error in the XML. A staging needs but a small part of each;
// without them the cost of a description could grow much faster than its size.
#ifndef TVML_STAGING_XML_LIMITS_H
#define TVML_STAGING_XML_LIMITS_H

#include <cstddef>

namespace tvml {

constexpr std::size_t kMostAttributes = 250;    // of one element
constexpr std::size_t kMostDepth = 1000;        // elements inside each other
constexpr std::size_t kMostNames = 4000;        // different names and namespaces
constexpr std::size_t kMostNamespaces = 100;    // with a prefix
constexpr std::size_t kMostDeclarations = 1000; // of a document type
constexpr std::size_t kLongestEntity = 65536;   // units
constexpr std::size_t kMostExpansions = 50000;  // of entities
constexpr std::size_t kMostOpenEntities = 50;   // inside each other, each takes some stack
constexpr std::size_t kHighestEntity = 100;     // declared, whether used or not
constexpr std::size_t kAddedUnits = 4'000'000;  // of text that entities and defaults add

} // namespace tvml

#endif

// The XML namespaces of a hardware repository file, by the prefixes that every repository
// expression uses. A repository file must declare its elements and attributes in these
// namespaces; see "Hardware repository" in docs/formats.md.
#ifndef HOST_QD_QDREPO_QDNAMESPACES_H_
#define HOST_QD_QDREPO_QDNAMESPACES_H_

#include <utility>

namespace qd {

struct QDNamespace {
  char const* prefix;
  char const* uri;
};

// In the order in which they are registered on a document's XPath context.
constexpr QDNamespace kQDNamespaces[] = {
    {"cf", "urn:quarrix:connections"},  // the tool maker's connections
    {"mvk", "urn:quarrix:mvk"},         // the product family
    {"qd", "urn:quarrix:qd"},           // the repository document itself
    {"quarrix", "urn:quarrix"},         // the tool maker's root
    {"spirit", "http://www.spiritconsortium.org/XMLSchema/SPIRIT/1685-2009"},  // IP-XACT
    // The W3C XML Schema instance namespace is reached through this prefix alone.
    {"hsi", "http://www.w3.org/2001/XMLSchema-instance"},
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDNAMESPACES_H_

// An XML file read whole with libxml2, for the readers of kernel descriptions and reports.
#ifndef PLATFORM_HCO_HCOXMLDOCUMENT_H_
#define PLATFORM_HCO_HCOXMLDOCUMENT_H_

#include <libxml/tree.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// Owns the parsed document for as long as it lives. Errors name the file and, where there is
// one, the line: "<path>:<line>: <what went wrong>", so that a user can open the file at the
// place. Nothing is printed: libxml2's own messages are collected, not shown.
class HCOXmlDocument {
 public:
  // Parses `path` without network access. Throws std::runtime_error "<path>: cannot be read" for
  // a file that cannot be opened, and "<path>:<line>: <libxml2's message>" for one that is not
  // well-formed XML.
  explicit HCOXmlDocument(std::string path);

  // The root element; never null after construction.
  xmlNode* root() const;
  std::string const& path() const { return path_; }

  // The element children of `node` in document order; those named `name` only when it is
  // given. Text, comments and processing instructions are passed over.
  static std::vector<xmlNode*> children(xmlNode const* node, char const* name = nullptr);
  // The element's name as written, without a namespace prefix.
  static std::string name(xmlNode const* node);
  // The attribute's value, or "" when the element does not have it.
  static std::string attribute(xmlNode const* node, char const* name);
  // The text content of the element and its descendants, white space around it removed.
  static std::string text(xmlNode const* node);

  // A std::runtime_error "<path>:<line of node>: <what>".
  std::runtime_error error(xmlNode const* node, std::string const& what) const;
  // `text` as an unsigned 32-bit decimal number, the whole text; otherwise throws error(node,
  // "<what> must be an unsigned decimal number below 2^32, not '<text>'").
  std::uint32_t unsignedNumber(xmlNode const* node, std::string const& text,
                               std::string const& what) const;
  // `text` as a signed 32-bit decimal number, the whole text; an empty text is 0.
  std::int32_t signedNumber(xmlNode const* node, std::string const& text,
                            std::string const& what) const;

 private:
  std::string path_;
  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> doc_;
};

#endif  // PLATFORM_HCO_HCOXMLDOCUMENT_H_

#include "platform/hco/HCOKernelXMLReader.h"

#include <utility>

#include "platform/hco/HCOXmlDocument.h"

HCOKernelXMLReader::HCOKernelXMLReader(std::string file) : path(std::move(file)) {}

void HCOKernelXMLReader::parse() {
  HCOXmlDocument const document(path);
  xmlNode const* root = document.root();
  if (HCOXmlDocument::name(root) != "kernel") {
    throw document.error(
        root, "the root element must be <kernel>, not <" + HCOXmlDocument::name(root) + ">");
  }
  mvk::kernel::KernelDef def;
  def.setName(HCOXmlDocument::attribute(root, "name"));
  for (xmlNode const* element : HCOXmlDocument::children(root)) {
    std::string const what = HCOXmlDocument::name(element);
    auto const get = [element](char const* attribute) {
      return HCOXmlDocument::attribute(element, attribute);
    };
    if (what == "port") {
      mvk::kernel::PortDesc port;
      port.name = get("name");
      port.mode = get("mode");
      port.detailA = get("detailA");
      port.dataWidth = document.signedNumber(element, get("dataWidth"), "dataWidth");
      port.portType = get("portType");
      port.detailB = get("detailB");
      def.addPort(std::move(port));
      continue;
    }
    if (what == "arg") {
      mvk::kernel::ArgDesc arg;
      arg.name = get("name");
      std::string const addressKind = get("addressKind");
      arg.addressKind =
          addressKind.empty() ? 0 : document.unsignedNumber(element, addressKind, "addressKind");
      arg.id = get("id");
      arg.port = get("port");
      arg.size = get("size");
      arg.offset = get("offset");
      arg.detailA = get("detailA");
      arg.detailB = get("detailB");
      arg.portInterfaceType = get("portInterfaceType");
      arg.type = get("type");
      arg.argName = get("argName");
      arg.hostSize = get("hostSize");
      def.addArg(std::move(arg));
      continue;
    }
    throw document.error(element, "unexpected element <" + what +
                                      "> in <kernel>: only <port> and <arg> belong there");
  }
  kernelDef = std::move(def);
}

#include "platform/hco/HCODesignXMLReader.h"

#include <utility>

#include "platform/hco/HCOXmlDocument.h"

namespace {

// Every element below <profile> has exactly one place; anything else is refused with its line.
void expect(HCOXmlDocument const& document, xmlNode const* element, char const* name,
            char const* parent) {
  if (HCOXmlDocument::name(element) == name) return;
  throw document.error(element, "unexpected element <" + HCOXmlDocument::name(element) + "> in <" +
                                    parent + ">: only <" + name + "> belongs there");
}

DesignXML::Resources readResources(HCOXmlDocument const& document, xmlNode const* element) {
  DesignXML::Resources resources;
  for (xmlNode const* count : HCOXmlDocument::children(element)) {
    std::string const what = HCOXmlDocument::name(count);
    lmx60::List<std::uint32_t>* list = nullptr;
    if (what == "BRAM") list = &resources.BRAM;
    if (what == "DSP") list = &resources.DSP;
    if (what == "FF") list = &resources.FF;
    if (what == "LUT") list = &resources.LUT;
    if (what == "SRL") list = &resources.SRL;
    if (what == "URAM") list = &resources.URAM;
    if (list == nullptr) {
      throw document.error(count, "unexpected element <" + what +
                                      "> in <resources>: only <BRAM>, <DSP>, <FF>, <LUT>, <SRL> "
                                      "and <URAM> belong there");
    }
    list->append(document.unsignedNumber(count, HCOXmlDocument::text(count), "<" + what + ">"));
  }
  return resources;
}

}  // namespace

HCODesignXMLReader::HCODesignXMLReader(std::string file) : path(std::move(file)) {}

void HCODesignXMLReader::parse() {
  HCOXmlDocument const document(path);
  xmlNode const* root = document.root();
  if (HCOXmlDocument::name(root) != "profile") {
    throw document.error(
        root, "the root element must be <profile>, not <" + HCOXmlDocument::name(root) + ">");
  }
  DesignXML::Profile read;
  for (xmlNode const* group : HCOXmlDocument::children(root)) {
    expect(document, group, "moduleInformation", "profile");
    DesignXML::ModuleInformation information;
    for (xmlNode const* moduleElement : HCOXmlDocument::children(group)) {
      expect(document, moduleElement, "module", "moduleInformation");
      DesignXML::Module module;
      module.name = HCOXmlDocument::attribute(moduleElement, "name");
      for (xmlNode const* estimateElement : HCOXmlDocument::children(moduleElement)) {
        expect(document, estimateElement, "areaEstimates", "module");
        DesignXML::AreaEstimates estimate;
        for (xmlNode const* resources : HCOXmlDocument::children(estimateElement)) {
          expect(document, resources, "resources", "areaEstimates");
          estimate.resources.push_back(readResources(document, resources));
        }
        module.areaEstimates.push_back(std::move(estimate));
      }
      information.AppendModule(std::move(module));
    }
    read.moduleInformation.push_back(std::move(information));
  }
  profile = std::move(read);
}

void HCODesignXMLReader::getModuleInformation(
    DesignXML::Profile const& from, std::vector<DesignXML::ModuleInformation>& out) const {
  out.insert(out.end(), from.moduleInformation.begin(), from.moduleInformation.end());
}

void HCODesignXMLReader::getAreaEstimates(DesignXML::Module const& from,
                                          std::vector<DesignXML::AreaEstimates>& out) const {
  out.insert(out.end(), from.areaEstimates.begin(), from.areaEstimates.end());
}

void HCODesignXMLReader::getResources(DesignXML::AreaEstimates const& from,
                                      std::vector<DesignXML::Resources>& out) const {
  out.insert(out.end(), from.resources.begin(), from.resources.end());
}

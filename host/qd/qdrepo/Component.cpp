#include "host/qd/qdrepo/Component.h"

#include <map>
#include <stdexcept>

#include "service/Log.h"

namespace qd {
namespace {

using boost::property_tree::ptree;

// One qd:clock of a platform's qd:systemClocks.
struct SysClockDef {
  explicit SysClockDef(ptree const& element)
      : name(requiredAttribute(element, "qd:name")),
        id(std::stoi(optionalAttribute(element, "qd:id", "-1"))),
        frequency(hertz(requiredAttribute(element, "qd:frequency"))),
        status(requiredAttribute(element, "qd:status")) {}

  // The text without its dots, in base 10: "100.000000" MHz reads as 100000000 Hz. A text with
  // another number of decimals is off by a power of ten, as in the files that rely on it.
  static long hertz(std::string text) {
    std::string digits;
    for (char c : text) {
      if (c != '.') digits += c;
    }
    return std::stol(digits, nullptr, 10);
  }

  std::string name;
  int id;
  long frequency;
  std::string status;
};

// A platform's clocks, needed only while its component is built.
struct PlatformInfo {
  explicit PlatformInfo(ptree const& element) {
    for (auto const& [key, child] : element.get_child("qd:systemClocks")) {
      if (key == "<xmlattr>") {
        defaultClock = child.get_child("qd:defaultClock").get_value<int>();
      } else if (key == "qd:clock") {
        auto clock = std::make_shared<SysClockDef>(child);
        clocks.emplace(clock->name, clock);  // the first of a name stays
      }
    }
  }

  int defaultClock = 0;
  std::map<std::string, std::shared_ptr<SysClockDef>> clocks;
};

template <class T>
void addFirst(Component::ByName<T>& byName, std::shared_ptr<T> const& object) {
  byName.emplace(object->name, object);
}

}  // namespace

Component::Component(ptree const& element)
    : name(requiredAttribute(element, "qd:name")), type(optionalAttribute(element, "qd:type")) {
  std::unique_ptr<PlatformInfo> platform;
  if (type == "platform") {
    platform = std::make_unique<PlatformInfo>(element.get_child("qd:platformInfo"));
    defaultClock = platform->defaultClock;
  }

  // Resets and AXI interfaces may name a clock further down, so they wait until every clock
  // is built; the plain ones wait so that they are written last into busInterfaceList.
  std::map<std::string, std::vector<std::size_t>> indices;
  std::vector<ptree const*> deferredResets;
  std::vector<ptree const*> deferredAxi;
  std::vector<ptree const*> deferredOthers;
  std::size_t counter = 0;
  bool failed = false;

  for (auto const& [key, child] : element) {
    if (key == "qd:port") {
      auto port = std::make_shared<Port>(child);
      addFirst(ports, port);
      portList.push_back(port);
      continue;
    }
    if (key != "qd:busInterface") continue;
    std::string const interfaceName = requiredAttribute(child, "qd:name");
    indices[interfaceName].push_back(counter++);
    std::string const busType = requiredAttribute(child, "qd:busTypeRef");
    if (busType == "clock") {
      try {
        auto clock = std::make_shared<ClockIntf>(child);
        addFirst(clocks, clock);
        clockList.push_back(clock);
        if (platform) {
          auto const system = platform->clocks.find(clock->name);
          if (system != platform->clocks.end()) {
            bool const fixed = system->second->status == "fixed";
            clock->SetSystemClkInfo(system->second->id, fixed, fixed, system->second->frequency);
            systemClocks.push_back(clock);
          }
        }
      } catch (std::exception const&) {
        Log(logINTERNAL, 9999) << "Failed to parse data base clock entry " << name << "/"
                               << interfaceName;
        failed = true;
      }
    } else if (busType == "reset") {
      deferredResets.push_back(&child);
    } else if (busType == "interrupt") {
      try {
        auto interrupt = std::make_shared<InterruptIntf>(child);
        addFirst(interrupts, interrupt);
        interruptList.push_back(interrupt);
      } catch (std::exception const&) {
        Log(logINTERNAL, 9999) << "Failed to parse data base interrupt entry " << name << "/"
                               << interfaceName;
        failed = true;
      }
    } else if (busType == "aximm" || busType == "axis") {
      deferredAxi.push_back(&child);
    } else {
      deferredOthers.push_back(&child);
    }
  }

  auto const clockNamed = [this](std::string const& clockName) {
    auto const found = clocks.find(clockName);
    return found == clocks.end() ? std::shared_ptr<ClockIntf>() : found->second;
  };
  for (ptree const* entry : deferredResets) {
    std::string const interfaceName = requiredAttribute(*entry, "qd:name");
    try {
      std::string const clockRef = requiredAttribute(*entry, "qd:clockRef");
      auto reset = std::make_shared<ResetIntf>(*entry, clockNamed(clockRef));
      addFirst(resets, reset);
      resetList.push_back(reset);
    } catch (std::exception const& error) {
      Log(logINTERNAL, 9999) << "Failed to parse data base reset intf entry " << name << "/"
                             << interfaceName << ": " << error.what();
      failed = true;
    }
  }
  for (ptree const* entry : deferredAxi) {
    std::string const interfaceName = requiredAttribute(*entry, "qd:name");
    try {
      std::string const clockRef = requiredAttribute(*entry, "qd:clockRef");
      optionalAttribute(*entry, "qd:sptag");  // read, and not kept
      std::shared_ptr<ClockIntf> const clock = clockNamed(clockRef);
      auto axi = std::make_shared<AxiBusIntf>(*entry, clock);
      addFirst(axiInterfaces, axi);
      axiList.push_back(axi);
      if (clock) clock->AddAssociation(axi);
    } catch (std::exception const& error) {
      Log(logINTERNAL, 9999) << "Failed to parse data base axi intf entry " << name << "/"
                             << interfaceName << ": " << error.what();
      failed = true;
    }
  }

  busInterfaceList.resize(counter);
  auto const place = [this, &indices](std::shared_ptr<BusIntf> const& object) {
    for (std::size_t index : indices[object->name]) busInterfaceList[index] = object;
    busInterfaces.emplace(object->name, object);
  };
  for (auto const& axi : axiList) place(axi);
  for (auto const& clock : clockList) place(clock);
  for (auto const& reset : resetList) place(reset);
  for (auto const& interrupt : interruptList) place(interrupt);
  for (ptree const* entry : deferredOthers) place(std::make_shared<BusIntf>(*entry));

  if (failed) throw std::runtime_error("Failed to parse data file for " + name);
}

}  // namespace qd

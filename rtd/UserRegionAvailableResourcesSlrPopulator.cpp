#include "rtd/UserRegionAvailableResourcesSlrPopulator.h"

#include <sstream>

#include "diagram/QrxBinBySlrBuilder.h"
#include "diagram/TextConversions.h"
#include "platform/mvk/NativeObjectService.h"

namespace IPA {

using boost::property_tree::ptree;

const std::string UserRegionAvailableResourcesSlrPopulator::bramPrefix = "BRAM_";
const std::string UserRegionAvailableResourcesSlrPopulator::uramPrefix = "URAM_";
const std::string UserRegionAvailableResourcesSlrPopulator::dspPrefix = "DSPs_";
const std::string UserRegionAvailableResourcesSlrPopulator::lutPrefix = "LUT_";
const std::string UserRegionAvailableResourcesSlrPopulator::regPrefix = "REG_";

const std::string UserRegionAvailableResourcesSlrPopulator::bramId = "BRAM";
const std::string UserRegionAvailableResourcesSlrPopulator::uramId = "URAM";
const std::string UserRegionAvailableResourcesSlrPopulator::dspId = "DSP";
const std::string UserRegionAvailableResourcesSlrPopulator::dspSlrId = "DSPs";
const std::string UserRegionAvailableResourcesSlrPopulator::lutId = "LUT";
const std::string UserRegionAvailableResourcesSlrPopulator::regId = "REG";

namespace {

bool startsWith(std::string const& text, std::string const& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

bool isResourceName(std::string const& text) {
  using Populator = UserRegionAvailableResourcesSlrPopulator;
  return startsWith(text, Populator::bramPrefix) || startsWith(text, Populator::uramPrefix) ||
         startsWith(text, Populator::dspPrefix) || startsWith(text, Populator::lutPrefix) ||
         startsWith(text, Populator::regPrefix);
}

}  // namespace

UserRegionAvailableResourcesSlrPopulator::UserRegionAvailableResourcesSlrPopulator(
    ptree platformTree)
    : platform(std::move(platformTree)) {}

void UserRegionAvailableResourcesSlrPopulator::populateUserRegionAvailableResourcesSlr(
    std::shared_ptr<QrxBinAvailableResourceBuilder> availableResources) const {
  BySlr const bySlr =
      resourcesBySlr(coalesceSlrResources(unCoalescedSlrs(platform, availableResources)));
  for (auto const& [slr, resources] : bySlr) {
    auto const entry = availableResources->addBySlr();
    entry->setSlr(slr);
    entry->setBram(resources.bram);
    entry->setUram(resources.uram);
    entry->setDsp(resources.dsp);
    entry->setLut(resources.lut);
    entry->setReg(resources.reg);
  }
}

UserRegionAvailableResourcesSlrPopulator::UnCoalesced
UserRegionAvailableResourcesSlrPopulator::unCoalescedSlrs(
    ptree const& platformTree,
    std::shared_ptr<QrxBinAvailableResourceBuilder> /*availableResources*/) const {
  UnCoalesced result;
  ptree const devices =
      mvk::platform::NativeObjectService{}.getChild(platformTree, "hardwarePlatform.devices");
  // Members are filtered by key rather than looked up, so that a repeated key is walked as often
  // as it stands, in document order.
  for (auto const& device : devices) {
    for (auto const& core : device.second) {
      if (core.first != "core") continue;
      for (auto const& available : core.second) {
        if (available.first != "availableResources") continue;
        for (auto const& pBlocks : available.second) {
          if (pBlocks.first != "pBlocks") continue;
          for (auto const& pBlock : pBlocks.second) {
            for (auto const& validSlrs : pBlock.second) {
              if (validSlrs.first != "validSlrs") continue;
              UnCoalesced const block = unCoalescedSlrResourcesForValidSlrBlock(validSlrs);
              result.insert(result.end(), block.begin(), block.end());
            }
          }
        }
      }
    }
  }
  return result;
}

UserRegionAvailableResourcesSlrPopulator::UnCoalesced
UserRegionAvailableResourcesSlrPopulator::unCoalescedSlrResourcesForValidSlrBlock(
    std::pair<const std::string, ptree> const& validSlrs) const {
  UnCoalesced result;
  for (auto const& resources : validSlrs.second) {
    if (resources.first != "resources") continue;
    // Replaced, not appended: the last "resources" member of a block is the one that counts.
    result = unCoalescedSlrResourcesByResourceType(resources);
  }
  return result;
}

UserRegionAvailableResourcesSlrPopulator::UnCoalesced
UserRegionAvailableResourcesSlrPopulator::unCoalescedSlrResourcesByResourceType(
    std::pair<const std::string, ptree> const& resources) const {
  UnCoalesced result;
  // Not reset between records: a name in one record may get its "value" from a later one.
  std::string pendingName;
  for (auto const& record : resources.second) {
    for (auto const& member : record.second) {
      std::string const& text = member.second.data();
      if (member.first == "value" && !pendingName.empty()) {
        std::istringstream in(text);
        long long count = 0;
        in >> count;
        if (in.fail()) {
          // An unreadable count still shows the resource, with 0.
          result.emplace_back(pendingName, 0ul);
        } else if (count >= 0) {
          result.emplace_back(pendingName, static_cast<unsigned long>(count));
        }
        // A negative count is dropped without a trace; the name is used up either way.
        pendingName.clear();
        continue;
      }
      if (isResourceName(text)) pendingName = text;
    }
  }
  return result;
}

UserRegionAvailableResourcesSlrPopulator::Coalesced
UserRegionAvailableResourcesSlrPopulator::coalesceSlrResources(
    UnCoalesced const& unCoalesced) const {
  Coalesced result;
  for (auto const& [name, count] : unCoalesced) result[name] += count;
  return result;
}

UserRegionAvailableResourcesSlrPopulator::BySlr
UserRegionAvailableResourcesSlrPopulator::resourcesBySlr(Coalesced const& coalesced) const {
  BySlr result;
  for (auto const& [name, count] : coalesced) {
    std::vector<std::string> const parts = splitKeepingEmpty(name, '_');
    // Cannot happen for the names gathered here, which all begin with a word and "_".
    if (parts.size() < 2) continue;
    std::string const& word = parts[0];
    std::string const& slr = parts[1];
    auto const found = result.find(slr);
    SlrResourceTuple const current = found == result.end() ? SlrResourceTuple() : found->second;
    result[slr] = slrResourceTuple(word, count, current);
  }
  return result;
}

SlrResourceTuple UserRegionAvailableResourcesSlrPopulator::slrResourceTuple(
    std::string const& resourceWord, unsigned long count, SlrResourceTuple tuple) const {
  std::string const text = integerToText(count);
  if (resourceWord == bramId) {
    tuple.bram = text;
  } else if (resourceWord == uramId) {
    tuple.uram = text;
  } else if (resourceWord == dspSlrId) {
    tuple.dsp = text;
  } else if (resourceWord == lutId) {
    tuple.lut = text;
  } else if (resourceWord == regId) {
    tuple.reg = text;
  }
  return tuple;
}

}  // namespace IPA

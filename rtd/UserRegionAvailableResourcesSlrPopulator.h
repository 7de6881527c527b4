// Fills the user region's resources per SLR from the pBlocks of the platform's devices.
#ifndef RTD_USERREGIONAVAILABLERESOURCESSLRPOPULATOR_H_
#define RTD_USERREGIONAVAILABLERESOURCESSLRPOPULATOR_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "diagram/QrxBinAvailableResourceBuilder.h"
#include "rtd/SlrResourceTuple.h"

namespace IPA {

// The platform does not give a table of resources per SLR. Under
// "hardwarePlatform.devices[].core.availableResources.pBlocks[].validSlrs.resources" it lists
// records that pair a resource name such as "BRAM_SLR0" with a member "value" holding its count.
// This class gathers those pairs, sums the counts of equal names across pBlocks and devices, and
// regroups them by the SLR name (the text between the first and the second underscore) into
// `userRegionAvailableResources.by_slr`.
//
// The platform is read leniently and nothing is reported: a name without its "value" is dropped,
// a "value" without a name is not counted, an unreadable count counts as 0 and a negative one is
// dropped. Made on the stack for one import and used once; it keeps its own copy of the tree.
class UserRegionAvailableResourcesSlrPopulator {
 public:
  // Every (resource name, count) pair found, in the order of the walk.
  using UnCoalesced = std::vector<std::tuple<std::string, unsigned long>>;
  // The sum of the counts per resource name.
  using Coalesced = std::unordered_map<std::string, unsigned long>;
  // One record per SLR name.
  using BySlr = std::unordered_map<std::string, SlrResourceTuple>;

  // The prefixes by which a resource name is recognised, each the resource word and "_".
  static const std::string bramPrefix;  // "BRAM_"
  static const std::string uramPrefix;  // "URAM_"
  static const std::string dspPrefix;   // "DSPs_"
  static const std::string lutPrefix;   // "LUT_"
  static const std::string regPrefix;   // "REG_"

  // The resource words. The device totals name the digital signal blocks "DSP" (`dspId`); the
  // names per SLR use "DSPs" (`dspSlrId`). The other words are the same in both places.
  static const std::string bramId;    // "BRAM"
  static const std::string uramId;    // "URAM"
  static const std::string dspId;     // "DSP"
  static const std::string dspSlrId;  // "DSPs"
  static const std::string lutId;     // "LUT"
  static const std::string regId;     // "REG"

  // `platformTree` is the platform's description as parsed from its JSON text; the populator
  // keeps it as its own copy.
  explicit UserRegionAvailableResourcesSlrPopulator(boost::property_tree::ptree platformTree);

  // Appends one `bySlr` to the region of `availableResources` for every SLR named in the
  // platform, with `slr` set to the SLR's name and all five resources set, those the platform
  // does not list for it as empty texts. The entries follow the iteration order of an unordered
  // map, so no reader may rely on their order. Nothing is appended when the platform has no
  // pBlocks. What stands in `by_slr` and in the region's totals already is left alone.
  void populateUserRegionAvailableResourcesSlr(
      std::shared_ptr<QrxBinAvailableResourceBuilder> availableResources) const;

  // The pairs of every "validSlrs" member of every pBlock of every device's "core" and
  // "availableResources", walked in document order, each block's pairs appended behind those of
  // the blocks before it. Reads "hardwarePlatform.devices" of `platformTree` with the platform
  // service's getChild, so a platform without it gives nothing. Equal names are not summed yet.
  // `availableResources` is not used.
  UnCoalesced unCoalescedSlrs(
      boost::property_tree::ptree const& platformTree,
      std::shared_ptr<QrxBinAvailableResourceBuilder> availableResources) const;

  // The pairs of one "validSlrs" member. When the block has more than one "resources" member,
  // only the last one counts: each replaces what the one before it gave. This differs from the
  // appending across blocks on purpose: appending here would change the counts per SLR that
  // diagrams of existing platforms show.
  UnCoalesced unCoalescedSlrResourcesForValidSlrBlock(
      std::pair<const std::string, boost::property_tree::ptree> const& validSlrs) const;

  // The pairs of one "resources" member, a list of records, walked record by record and member
  // by member in document order. A member whose value begins with one of the five prefixes
  // (under any key) makes that whole value the pending name; a later name replaces it. A member
  // "value" while a name is pending ends the pair: its text is read as a signed decimal number
  // the way a default string stream reads it ("12ab" is 12); an unreadable text, or one beyond
  // the range of a signed 64-bit number, appends the count 0, a negative number appends nothing,
  // and either way the name is no longer pending.
  // The pending name lives across records, so a record with only a name followed by a record
  // with only a "value" still makes one pair.
  UnCoalesced unCoalescedSlrResourcesByResourceType(
      std::pair<const std::string, boost::property_tree::ptree> const& resources) const;

  // The counts of `unCoalesced` summed per name, so that equal names from different pBlocks or
  // devices add up.
  Coalesced coalesceSlrResources(UnCoalesced const& unCoalesced) const;

  // The counts of `coalesced` grouped by SLR. A name is split at every "_" (underscores are not
  // merged): the first part is the resource word and the second the SLR name, which is empty for
  // a name that ends in its first underscore. Later parts are ignored, so "BRAM_SLR0_a" and
  // "BRAM_SLR0_b" fill the same field and the one that comes later in the map's iteration order
  // wins. A name without an underscore is skipped. An SLR appears even when its word is none of
  // the five.
  BySlr resourcesBySlr(Coalesced const& coalesced) const;

  // `tuple` with the field of `resourceWord` ("BRAM", "URAM", "DSPs", "LUT" or "REG", exactly, with
  // case) set to the decimal text of `count`; unchanged for any other word.
  SlrResourceTuple slrResourceTuple(std::string const& resourceWord, unsigned long count,
                                    SlrResourceTuple tuple) const;

 private:
  boost::property_tree::ptree platform;  // the platform's description, as parsed
};

}  // namespace IPA

#endif  // RTD_USERREGIONAVAILABLERESOURCESSLRPOPULATOR_H_

// Gathers one IP entry of a run-time data file, member by member.
#ifndef RTD_RTDIPDATABUILDER_H_
#define RTD_RTDIPDATABUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "rtd/RtdIpData.h"

namespace IPA {

// Starts with every field empty; make one for each entry. Keeps nothing of the tree it is given.
class RtdIpDataBuilder {
 public:
  RtdIpDataBuilder() = default;

  // Takes one member of the entry. A text key of RtdIpData sets its field to the member's text,
  // overwriting an earlier value. "m_clocks" replaces the clock list with one ClockRef for each
  // member of each child of `value`, in the order of the file: the member's key is the port
  // name, its "refClockId" the clock, empty when missing. Any other key is skipped. Never
  // throws for the shape of `value`.
  // `Tree` is boost::property_tree::ptree or RtdJsonDocument::Node.
  template <class Tree>
  void addMember(std::string const& key, Tree const& value);

  // A copy of the entry as gathered so far.
  RtdIpData build() const { return ipData; }

 private:
  RtdIpData ipData;
};

}  // namespace IPA

#endif  // RTD_RTDIPDATABUILDER_H_

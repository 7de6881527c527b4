#include "resources/ActualResourcesComputeUnitVisitor.h"

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "diagram/SystemDiagramInterface.h"
#include "resources/ActualResource.h"
#include "resources/ActualResourceCollection.h"
#include "resources/ActualResourcesTree.h"

namespace IPA {

namespace {

using boost::property_tree::ptree;

// The counts of one "actual_resources" object, taken in `state`. A key given twice counts with
// its last value.
ActualResource countsOf(ptree const& counts, std::string const& state) {
  ActualResource record;
  record.state = state;
  for (auto const& count : counts) {
    if (count.first == "LUT") {
      record.lut = count.second.data();
    } else if (count.first == "REG") {
      record.reg = count.second.data();
    } else if (count.first == "BRAM") {
      record.bram = count.second.data();
    } else if (count.first == "URAM") {
      record.uram = count.second.data();
    } else if (count.first == "DSP") {
      record.dsp = count.second.data();
    }
  }
  return record;
}

}  // namespace

ActualResourcesComputeUnitVisitor::ActualResourcesComputeUnitVisitor(SystemDiagramInterface* target)
    : diagram(target) {}

void ActualResourcesComputeUnitVisitor::visit(ActualResourcesTree& tree) {
  // The walk keeps to file order: a "design_state" written after "kernels" does not reach them.
  std::string state;
  for (auto const& top : tree.propertyTree()) {
    if (top.first == "design_state") {
      state = top.second.data();
      continue;
    }
    if (top.first != "kernels") continue;
    for (auto const& kernel : top.second) {
      for (auto const& kernelKey : kernel.second) {
        if (kernelKey.first != "compute_units") continue;
        for (auto const& unit : kernelKey.second) {
          std::string name;
          ActualResourceCollection collection;
          for (auto const& unitKey : unit.second) {
            if (unitKey.first == "cu_name") {
              name = unitKey.second.data();
            } else if (unitKey.first == "actual_resources") {
              collection.resources[state] = countsOf(unitKey.second, state);
            }
          }
          // Only at the end of the object, so that "cu_name" may stand after the counts.
          diagram->addComputeUnitActualResource(name, collection);
        }
      }
    }
  }
}

}  // namespace IPA

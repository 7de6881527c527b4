// A diagram with one user region and one kernel, for the tests of the kernel's child builders.
#ifndef TESTS_SUPPORT_KERNELBUILDERFIXTURE_H_
#define TESTS_SUPPORT_KERNELBUILDERFIXTURE_H_

#include <memory>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace qvtest {

class KernelBuilderFixture : public ::testing::Test {
 protected:
  // The kernel as stored in the tree.
  ProfileAnalyzerSystemDiagramSerializable::kernel const& storedKernel() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0).kernels(0);
  }

  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root =
      std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
  std::shared_ptr<IPA::QrxBinKernelBuilder> kernel = region->addKernel();
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_KERNELBUILDERFIXTURE_H_

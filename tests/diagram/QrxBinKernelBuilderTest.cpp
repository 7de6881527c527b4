#include "diagram/QrxBinKernelBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/EstimatedResourcesBuilder.h"
#include "diagram/KernelArgumentBuilder.h"
#include "diagram/KernelClockRefBuilder.h"
#include "diagram/KernelPortBuilder.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinKernelBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QrxBinKernelBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::kernel>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &Builder::setName, &pb::kernel::name, "vadd"},
        {"setDescription writes description", &Builder::setDescription,
         &pb::kernel::description, "adds two vectors"},
    };
    return rows;
  }

  pb::userRegion const& userRegion() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0);
  }
  pb::kernel const& firstKernel() const { return userRegion().kernels(0); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
};

TEST_F(QrxBinKernelBuilderTest, MakingItAppendsOneEmptyKernel) {
  auto kernel = std::make_shared<Builder>(region);

  ASSERT_EQ(userRegion().kernels_size(), 1);
  EXPECT_EQ(kernel->message(), &firstKernel());
  EXPECT_EQ(firstKernel().ByteSizeLong(), 0u);
  EXPECT_FALSE(firstKernel().has_estimated_resources());
}

TEST_F(QrxBinKernelBuilderTest, EachBuilderAppendsItsOwnKernelInOrder) {
  auto first = std::make_shared<Builder>(region);
  auto second = std::make_shared<Builder>(region);
  second->setName("kernel_b");
  first->setName("kernel_a");

  ASSERT_EQ(userRegion().kernels_size(), 2);
  EXPECT_EQ(userRegion().kernels(0).name(), "kernel_a");
  EXPECT_EQ(userRegion().kernels(1).name(), "kernel_b");
}

TEST_F(QrxBinKernelBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto kernel = std::make_shared<Builder>(region);

    ((*kernel).*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*kernel->message(), textSetters(), i));
  }
}

TEST_F(QrxBinKernelBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  auto kernel = std::make_shared<Builder>(region);

  for (auto const& row : textSetters()) ((*kernel).*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(firstKernel(), textSetters()));
}

TEST_F(QrxBinKernelBuilderTest, AddPortAppendsPortsInOrder) {
  auto kernel = std::make_shared<Builder>(region);

  auto first = kernel->addPort();
  auto second = kernel->addPort();
  second->setName("M_AXI_GMEM1");
  first->setName("M_AXI_GMEM0");

  ASSERT_EQ(firstKernel().ports_size(), 2);
  EXPECT_EQ(firstKernel().ports(0).name(), "M_AXI_GMEM0");
  EXPECT_EQ(firstKernel().ports(1).name(), "M_AXI_GMEM1");
  EXPECT_EQ(first->getParent(), kernel);
}

TEST_F(QrxBinKernelBuilderTest, AddArgumentAppendsArgumentsInOrder) {
  auto kernel = std::make_shared<Builder>(region);

  auto first = kernel->addArgument();
  auto second = kernel->addArgument();
  auto third = kernel->addArgument();
  third->setName("size");
  first->setName("in1");
  second->setName("in2");

  ASSERT_EQ(firstKernel().arguments_size(), 3);
  EXPECT_EQ(firstKernel().arguments(0).name(), "in1");
  EXPECT_EQ(firstKernel().arguments(1).name(), "in2");
  EXPECT_EQ(firstKernel().arguments(2).name(), "size");
  EXPECT_EQ(third->getParent(), kernel);
}

TEST_F(QrxBinKernelBuilderTest, AddClockRefAppendsReferencesInOrder) {
  auto kernel = std::make_shared<Builder>(region);

  auto first = kernel->addClockRef();
  auto second = kernel->addClockRef();
  second->setName("ap_clk_2");
  first->setName("ap_clk");

  ASSERT_EQ(firstKernel().clock_refs_size(), 2);
  EXPECT_EQ(firstKernel().clock_refs(0).name(), "ap_clk");
  EXPECT_EQ(firstKernel().clock_refs(1).name(), "ap_clk_2");
  EXPECT_EQ(second->getParent(), kernel);
}

TEST_F(QrxBinKernelBuilderTest, EstimatedResourcesFillsTheEstimateOfThisKernel) {
  auto other = std::make_shared<Builder>(region);
  auto kernel = std::make_shared<Builder>(region);

  auto estimate = kernel->estimatedResources();
  estimate->setLut("1200");

  EXPECT_EQ(estimate->getParent(), kernel);
  EXPECT_EQ(userRegion().kernels(1).estimated_resources().lut(), "1200");
  EXPECT_FALSE(userRegion().kernels(0).has_estimated_resources());
}

TEST_F(QrxBinKernelBuilderTest, EstimatedResourcesTwiceFillsTheSameEstimate) {
  auto kernel = std::make_shared<Builder>(region);

  // Every area estimate of the synthesis report makes a builder of its own; all of them must
  // write into the one estimate of the kernel, so that the last value set wins.
  kernel->estimatedResources()->setLut("1200");
  kernel->estimatedResources()->setDsp("5");
  kernel->estimatedResources()->setLut("1300");

  EXPECT_EQ(firstKernel().estimated_resources().lut(), "1300");
  EXPECT_EQ(firstKernel().estimated_resources().dsp(), "5");
}

TEST_F(QrxBinKernelBuilderTest, AddPortOutsideASharedPointerThrowsBadWeakPtr) {
  Builder kernel(region);

  EXPECT_THROW(kernel.addPort(), std::bad_weak_ptr);
  EXPECT_EQ(firstKernel().ports_size(), 0);
}

TEST_F(QrxBinKernelBuilderTest, AddArgumentOutsideASharedPointerThrowsBadWeakPtr) {
  Builder kernel(region);

  EXPECT_THROW(kernel.addArgument(), std::bad_weak_ptr);
  EXPECT_EQ(firstKernel().arguments_size(), 0);
}

TEST_F(QrxBinKernelBuilderTest, AddClockRefOutsideASharedPointerThrowsBadWeakPtr) {
  Builder kernel(region);

  EXPECT_THROW(kernel.addClockRef(), std::bad_weak_ptr);
  EXPECT_EQ(firstKernel().clock_refs_size(), 0);
}

TEST_F(QrxBinKernelBuilderTest, EstimatedResourcesOutsideASharedPointerThrowsBadWeakPtr) {
  Builder kernel(region);

  EXPECT_THROW(kernel.estimatedResources(), std::bad_weak_ptr);
  EXPECT_FALSE(firstKernel().has_estimated_resources());
}

TEST_F(QrxBinKernelBuilderTest, KnowsItsParent) {
  auto kernel = std::make_shared<Builder>(region);

  EXPECT_EQ(kernel->getParent(), region);
}

TEST_F(QrxBinKernelBuilderTest, AChildBuilderKeepsTheKernelAndTheTreeAlive) {
  // A root and region of their own, so that the port's builder holds the only way to them once
  // the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto kernel = ownRegion->addKernel();
  std::weak_ptr<Builder> watchKernel = kernel;
  auto port = kernel->addPort();
  kernel.reset();
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  ASSERT_FALSE(watchKernel.expired());
  port->setPortType("addressable");
  EXPECT_EQ(port->getParent()->message()->ports(0).port_type(), "addressable");

  port.reset();
  EXPECT_TRUE(watchKernel.expired());
  EXPECT_TRUE(watch.expired());
}

}  // namespace

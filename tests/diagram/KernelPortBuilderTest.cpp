#include "diagram/KernelPortBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"
#include "tests/support/KernelBuilderFixture.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class KernelPortBuilderTest : public qvtest::KernelBuilderFixture {
 protected:
  using Builder = IPA::KernelPortBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::port>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &Builder::setName, &pb::port::name, "M_AXI_GMEM"},
        {"setMode writes mode", &Builder::setMode, &pb::port::mode, "master"},
        {"setDetailA writes detail_a", &Builder::setDetailA, &pb::port::detail_a, "0x0"},
        {"setDataWidth writes data_width", &Builder::setDataWidth, &pb::port::data_width, "512"},
        {"setPortType writes port_type", &Builder::setPortType, &pb::port::port_type,
         "addressable"},
        {"setDetailB writes detail_b", &Builder::setDetailB, &pb::port::detail_b,
         "0xFFFFFFFF"},
    };
    return rows;
  }
};

TEST_F(KernelPortBuilderTest, MakingItAppendsOneEmptyEntry) {
  Builder builder(kernel);

  ASSERT_EQ(storedKernel().ports_size(), 1);
  EXPECT_EQ(builder.message(), &storedKernel().ports(0));
  EXPECT_EQ(storedKernel().ports(0).ByteSizeLong(), 0u);
}

TEST_F(KernelPortBuilderTest, EachBuilderAppendsItsOwnEntryInOrder) {
  Builder first(kernel);
  Builder second(kernel);
  Builder third(kernel);
  third.setName("third");
  first.setName("first");
  second.setName("second");

  ASSERT_EQ(storedKernel().ports_size(), 3);
  EXPECT_EQ(storedKernel().ports(0).name(), "first");
  EXPECT_EQ(storedKernel().ports(1).name(), "second");
  EXPECT_EQ(storedKernel().ports(2).name(), "third");
}

TEST_F(KernelPortBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    Builder builder(kernel);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*builder.message(), textSetters(), i));
  }
}

TEST_F(KernelPortBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(kernel);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(storedKernel().ports(0), textSetters()));
}

TEST_F(KernelPortBuilderTest, KnowsItsParent) {
  Builder builder(kernel);

  EXPECT_EQ(builder.getParent(), kernel);
}

TEST_F(KernelPortBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root, region and kernel of their own, so that this builder holds the only way to them once
  // the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto builder = std::make_unique<Builder>(ownRegion->addKernel());
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setName("kept");
  EXPECT_EQ(builder->getParent()->message()->ports(0).name(), "kept");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace

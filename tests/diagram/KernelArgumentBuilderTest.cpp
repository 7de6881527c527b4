#include "diagram/KernelArgumentBuilder.h"

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

class KernelArgumentBuilderTest : public qvtest::KernelBuilderFixture {
 protected:
  using Builder = IPA::KernelArgumentBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::argument>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setId writes id", &Builder::setId, &pb::argument::id, "3"},
        {"setName writes name", &Builder::setName, &pb::argument::name, "in1"},
        {"setAddressKind writes address_kind", &Builder::setAddressKind,
         &pb::argument::address_kind, "1"},
        {"setPort writes port", &Builder::setPort, &pb::argument::port, "M_AXI_GMEM"},
        {"setSize writes size", &Builder::setSize, &pb::argument::size, "0x8"},
        {"setOffset writes offset", &Builder::setOffset, &pb::argument::offset, "0x10"},
        {"setDetailA writes detail_a", &Builder::setDetailA, &pb::argument::detail_a,
         "0x0"},
        {"setDetailB writes detail_b", &Builder::setDetailB, &pb::argument::detail_b,
         "int*"},
        {"setPortInterfaceType writes port_interface_type", &Builder::setPortInterfaceType,
         &pb::argument::port_interface_type, "m_axi"},
    };
    return rows;
  }
};

TEST_F(KernelArgumentBuilderTest, MakingItAppendsOneEmptyEntry) {
  Builder builder(kernel);

  ASSERT_EQ(storedKernel().arguments_size(), 1);
  EXPECT_EQ(builder.message(), &storedKernel().arguments(0));
  EXPECT_EQ(storedKernel().arguments(0).ByteSizeLong(), 0u);
}

TEST_F(KernelArgumentBuilderTest, EachBuilderAppendsItsOwnEntryInOrder) {
  Builder first(kernel);
  Builder second(kernel);
  Builder third(kernel);
  third.setName("third");
  first.setName("first");
  second.setName("second");

  ASSERT_EQ(storedKernel().arguments_size(), 3);
  EXPECT_EQ(storedKernel().arguments(0).name(), "first");
  EXPECT_EQ(storedKernel().arguments(1).name(), "second");
  EXPECT_EQ(storedKernel().arguments(2).name(), "third");
}

TEST_F(KernelArgumentBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    Builder builder(kernel);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*builder.message(), textSetters(), i));
  }
}

TEST_F(KernelArgumentBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(kernel);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(storedKernel().arguments(0), textSetters()));
}

TEST_F(KernelArgumentBuilderTest, KnowsItsParent) {
  Builder builder(kernel);

  EXPECT_EQ(builder.getParent(), kernel);
}

TEST_F(KernelArgumentBuilderTest, KeepsTheTreeAliveUntilItEnds) {
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
  EXPECT_EQ(builder->getParent()->message()->arguments(0).name(), "kept");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(KernelArgumentBuilderTest, TakesTheTextAsItIs) {
  Builder builder(kernel);

  // The builders convert nothing: a size in hexadecimal stays as the kernel description wrote it.
  builder.setSize("0x0000000000000008");
  builder.setAddressKind("");

  EXPECT_EQ(storedKernel().arguments(0).size(), "0x0000000000000008");
  EXPECT_EQ(storedKernel().arguments(0).address_kind(), "");
}

}  // namespace

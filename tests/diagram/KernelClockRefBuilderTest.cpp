#include "diagram/KernelClockRefBuilder.h"

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

class KernelClockRefBuilderTest : public qvtest::KernelBuilderFixture {
 protected:
  using Builder = IPA::KernelClockRefBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::clockRef>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &Builder::setName, &pb::clockRef::name, "ap_clk"},
        {"setClockId writes clock_id", &Builder::setClockId, &pb::clockRef::clock_id, "0"},
        {"setPlio writes plio", &Builder::setPlio, &pb::clockRef::plio, "plio_in_0"},
        {"setAnnotatedArg writes annotated_arg", &Builder::setAnnotatedArg,
         &pb::clockRef::annotated_arg, "in_stream"},
    };
    return rows;
  }
};

TEST_F(KernelClockRefBuilderTest, MakingItAppendsOneEmptyEntry) {
  Builder builder(kernel);

  ASSERT_EQ(storedKernel().clock_refs_size(), 1);
  EXPECT_EQ(builder.message(), &storedKernel().clock_refs(0));
  EXPECT_EQ(storedKernel().clock_refs(0).ByteSizeLong(), 0u);
}

TEST_F(KernelClockRefBuilderTest, EachBuilderAppendsItsOwnEntryInOrder) {
  Builder first(kernel);
  Builder second(kernel);
  Builder third(kernel);
  third.setName("third");
  first.setName("first");
  second.setName("second");

  ASSERT_EQ(storedKernel().clock_refs_size(), 3);
  EXPECT_EQ(storedKernel().clock_refs(0).name(), "first");
  EXPECT_EQ(storedKernel().clock_refs(1).name(), "second");
  EXPECT_EQ(storedKernel().clock_refs(2).name(), "third");
}

TEST_F(KernelClockRefBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    Builder builder(kernel);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*builder.message(), textSetters(), i));
  }
}

TEST_F(KernelClockRefBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(kernel);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(storedKernel().clock_refs(0), textSetters()));
}

TEST_F(KernelClockRefBuilderTest, KnowsItsParent) {
  Builder builder(kernel);

  EXPECT_EQ(builder.getParent(), kernel);
}

TEST_F(KernelClockRefBuilderTest, KeepsTheTreeAliveUntilItEnds) {
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
  EXPECT_EQ(builder->getParent()->message()->clock_refs(0).name(), "kept");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(KernelClockRefBuilderTest, SetRequestedFrequencyWritesThatFrequencyOnly) {
  Builder builder(kernel);

  builder.setRequestedFrequency(300.0);

  EXPECT_EQ(storedKernel().clock_refs(0).requested_frequency(), 300.0);
  EXPECT_EQ(storedKernel().clock_refs(0).achieved_frequency(), 0.0);
  EXPECT_EQ(storedKernel().clock_refs(0).name(), "");
}

TEST_F(KernelClockRefBuilderTest, SetAchievedFrequencyWritesThatFrequencyOnly) {
  Builder builder(kernel);

  builder.setAchievedFrequency(287.5);

  EXPECT_EQ(storedKernel().clock_refs(0).achieved_frequency(), 287.5);
  EXPECT_EQ(storedKernel().clock_refs(0).requested_frequency(), 0.0);
}

TEST_F(KernelClockRefBuilderTest, FrequenciesAreStoredUnrounded) {
  Builder builder(kernel);

  // 1.0 / 3.333 * 1000.0 is what a period of 3.333 ns gives; the builder must keep every bit.
  double const fromPeriod = (1.0 / 3.333) * 1000.0;
  builder.setRequestedFrequency(fromPeriod);

  EXPECT_EQ(storedKernel().clock_refs(0).requested_frequency(), fromPeriod);
  EXPECT_NEAR(storedKernel().clock_refs(0).requested_frequency(), 300.030003, 1e-6);
}

TEST_F(KernelClockRefBuilderTest, AFreshReferenceLeavesTheEngineFieldsEmpty) {
  Builder builder(kernel);
  builder.setName("ap_clk");
  builder.setRequestedFrequency(250.0);

  // The engine array's fields come from later requests, never from the import.
  EXPECT_EQ(storedKernel().clock_refs(0).plio(), "");
  EXPECT_EQ(storedKernel().clock_refs(0).annotated_arg(), "");
  EXPECT_EQ(storedKernel().clock_refs(0).clock_id(), "");
}

}  // namespace

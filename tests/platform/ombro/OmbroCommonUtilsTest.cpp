#include "platform/ombro/OmbroCommonUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using OmbroCommonUtils::collectKernelInsts;
using OmbroCommonUtils::doSplit;
using OmbroCommonUtils::Kernel;
using Strings = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(DoSplitTest, FieldsBetweenSeparatorsUntrimmed) {
  EXPECT_EQ(doSplit("vadd, hls ,dir", ',', false), (Strings{"vadd", " hls ", "dir"}));
  EXPECT_EQ(doSplit("vadd", ',', false), (Strings{"vadd"}));
}

TEST(DoSplitTest, EmptyFieldsAreKeptUnlessSkipped) {
  EXPECT_EQ(doSplit("a,,b", ',', false), (Strings{"a", "", "b"}));
  EXPECT_EQ(doSplit("a,", ',', false), (Strings{"a", ""}));
  EXPECT_EQ(doSplit(",", ',', false), (Strings{"", ""}));
  EXPECT_EQ(doSplit("a,,b,", ',', true), (Strings{"a", "b"}));
}

TEST(DoSplitTest, EmptyLineHasNoField) {
  EXPECT_EQ(doSplit("", ',', false), Strings{});
  EXPECT_EQ(doSplit("", ',', true), Strings{});
  EXPECT_EQ(doSplit(" ", ',', false), Strings{" "});
}

class CollectKernelInstsTest : public ::testing::Test {
 protected:
  CollectKernelInstsTest() {
    kernels.resize(2);
    kernels[0].name = "vadd";
    kernels[1].name = "mmult";
  }
  std::vector<Kernel> kernels;
  std::string error = "untouched";
};

TEST_F(CollectKernelInstsTest, EmptyListsSucceedAndChangeNothing) {
  EXPECT_TRUE(collectKernelInsts({}, {}, false, false, kernels, error));
  EXPECT_TRUE(kernels[0].instances.empty());
  EXPECT_TRUE(kernels[1].instances.empty());
  EXPECT_EQ(error, "untouched");
}

TEST_F(CollectKernelInstsTest, InstanceListsThenPairsAppendInOrder) {
  kernels[0].instances = {"vadd_0"};
  kernels[0].instanceOrigins = {"earlier"};
  EXPECT_TRUE(collectKernelInsts({"vadd:vadd_1,vadd_2", "mmult:mm"}, Pairs{{"vadd", "vadd_3"}},
                                 false, false, kernels, error));
  EXPECT_EQ(kernels[0].instances, (Strings{"vadd_0", "vadd_1", "vadd_2", "vadd_3"}));
  EXPECT_EQ(kernels[0].instanceOrigins,
            (Strings{"earlier", "vadd:vadd_1,vadd_2", "vadd:vadd_1,vadd_2", "vadd:vadd_3"}));
  EXPECT_EQ(kernels[1].instances, Strings{"mm"});
}

TEST_F(CollectKernelInstsTest, ReplaceDropsEarlierInstancesOfNamedKernelsOnly) {
  kernels[0].instances = {"old"};
  kernels[0].instanceOrigins = {"old origin"};
  kernels[1].instances = {"kept"};
  kernels[1].instanceOrigins = {"kept origin"};
  EXPECT_TRUE(collectKernelInsts({"vadd:new"}, {}, true, false, kernels, error));
  EXPECT_EQ(kernels[0].instances, Strings{"new"});
  EXPECT_EQ(kernels[1].instances, Strings{"kept"});
}

TEST_F(CollectKernelInstsTest, DefaultInstanceForKernelsLeftWithout) {
  EXPECT_TRUE(collectKernelInsts({"vadd:v"}, {}, false, true, kernels, error));
  EXPECT_EQ(kernels[0].instances, Strings{"v"});
  EXPECT_EQ(kernels[1].instances, Strings{"mmult_1"});
  EXPECT_EQ(kernels[1].instanceOrigins, Strings{""});
}

TEST_F(CollectKernelInstsTest, MalformedInstanceListsFailAndChangeNothing) {
  for (std::string const list : {"vadd", ":v", "vadd:", "vadd:a,,b"}) {
    error.clear();
    EXPECT_FALSE(collectKernelInsts({"mmult:m", list}, {}, false, true, kernels, error)) << list;
    EXPECT_EQ(error, "kernel instance list '" + list +
                         "' is not of the form <kernel>:<instance>[,<instance>...]");
    EXPECT_TRUE(kernels[1].instances.empty());
  }
  EXPECT_FALSE(collectKernelInsts({}, Pairs{{"vadd", ""}}, false, false, kernels, error));
  EXPECT_EQ(error, "kernel instance pair 'vadd:' has an empty kernel or instance name");
}

TEST_F(CollectKernelInstsTest, UnknownKernelFailsAndChangesNothing) {
  EXPECT_FALSE(collectKernelInsts({"vadd:v", "conv:c"}, {}, false, false, kernels, error));
  EXPECT_EQ(error,
            "kernel instance list 'conv:c' names the kernel 'conv', which is not among "
            "the kernels");
  EXPECT_TRUE(kernels[0].instances.empty());
}

TEST_F(CollectKernelInstsTest, InstanceNamedTwiceFails) {
  kernels[0].instances = {"v"};
  EXPECT_FALSE(collectKernelInsts({}, Pairs{{"vadd", "v"}}, false, false, kernels, error));
  EXPECT_EQ(error,
            "kernel instance list 'vadd:v' names the instance 'v' of kernel 'vadd' a "
            "second time");
  EXPECT_EQ(kernels[0].instances, Strings{"v"});
}

}  // namespace

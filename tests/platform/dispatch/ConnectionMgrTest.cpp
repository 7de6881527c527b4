#include "platform/dispatch/ConnectionMgr.h"

#include <gtest/gtest.h>

TEST(ConnectionMgrTest, Placeholder) { SUCCEED(); }

// Properties as tests; see ../rapidcheck.h.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#define RC_GTEST_PROP(Suite, Name, Parameters)                                                                         \
  static void Suite##Name##Property Parameters;                                                                        \
  TEST(Suite, Name)                                                                                                    \
  {                                                                                                                    \
    EXPECT_TRUE(::rc::detail::HoldsForAny(&Suite##Name##Property));                                                    \
  }                                                                                                                    \
  static void Suite##Name##Property Parameters

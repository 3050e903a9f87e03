// Includes the file named by HWY_TARGET_INCLUDE once for each instruction set. The one place that names Highway, with
// pixel_rows-inl.h. No include guard: it is meant to be read again and again.
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

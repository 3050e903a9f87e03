// The export macro of the library, which C knows, too, and the integer types that the suite shares with its host
// systems.
#pragma once

#if defined(_WIN32)
#if defined(ZELCLR_BUILDING)
#define ZELCLR_API __declspec(dllexport)
#else
#define ZELCLR_API __declspec(dllimport)
#endif
#else
#define ZELCLR_API __attribute__((visibility("default")))
#endif

#if defined(__cplusplus)
#include <cstdint>

/// A colour as 0x00BBGGRR. Windows defines the same name as the same type.
#if defined(_WIN32)
using COLORREF = unsigned long;
#else
using COLORREF = std::uint32_t;
#endif
#endif

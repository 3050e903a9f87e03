// The export macro of the library, and the integer types that the suite shares with its host systems.
#pragma once

#include <cstdint>

#if defined(_WIN32)
#if defined(ZELCLR_BUILDING)
#define ZELCLR_API __declspec(dllexport)
#else
#define ZELCLR_API __declspec(dllimport)
#endif
/// A colour as 0x00BBGGRR. Windows defines the same name as the same type.
using COLORREF = unsigned long;
#else
#define ZELCLR_API __attribute__((visibility("default")))
/// A colour as 0x00BBGGRR.
using COLORREF = std::uint32_t;
#endif

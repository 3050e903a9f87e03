// What the channels of ColorModel::Xyz stand for, as D65_XYZ.icc has it: X / 0.95046, Y and Z / 1.08906 of a colour as
// it is on the D65 white, so that white is 1, 1, 1 and no colour of a surface or of sRGB lies outside 0 to 1.
// Source: ICC.1:2022, Annex E: D65 to D50 by the linear Bradford matrix B is B^-1 diag(B D50 / B D65) B.
//
// Threads and errors: constants.
#pragma once

#include "zelclr/convert/formulas/srgb_lab.h"

#include <array>

namespace ColorSystem {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Triple Times(const Matrix &m, const Triple &v)
{
  Triple product{};
  for (std::size_t row = 0; row < 3; ++row)
    product[row] = m[row][0] * v[0] + m[row][1] * v[1] + m[row][2] * v[2];
  return product;
}

constexpr Matrix Times(const Matrix &a, const Matrix &b)
{
  Matrix product{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column)
      product[row][column] = a[row][0] * b[0][column] + a[row][1] * b[1][column] + a[row][2] * b[2][column];
  }
  return product;
}

constexpr Matrix Diagonal(const Triple &v)
{
  return {{{v[0], 0, 0}, {0, v[1], 0}, {0, 0, v[2]}}};
}

/// By cofactors.
constexpr Matrix Inverse(const Matrix &m)
{
  const auto cofactor = [&](std::size_t row, std::size_t column) {
    const std::size_t a = (row + 1) % 3, b = (row + 2) % 3, c = (column + 1) % 3, d = (column + 2) % 3;
    return m[a][c] * m[b][d] - m[a][d] * m[b][c];
  };
  const double determinant = m[0][0] * cofactor(0, 0) + m[0][1] * cofactor(0, 1) + m[0][2] * cofactor(0, 2);
  Matrix inverse{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column)
      inverse[row][column] = cofactor(column, row) / determinant;
  }
  return inverse;
}

constexpr Matrix Rows(const double (&rows)[3][3])
{
  return {
    {{rows[0][0], rows[0][1], rows[0][2]}, {rows[1][0], rows[1][1], rows[1][2]}, {rows[2][0], rows[2][1], rows[2][2]}}};
}

inline constexpr Triple kWhiteOfD50 = {ZelClr::Formulas::kD50White.x, ZelClr::Formulas::kD50White.y,
                                       ZelClr::Formulas::kD50White.z};
inline constexpr Triple kWhiteOfD65 = {0.95046, 1.0, 1.08906};
inline constexpr Matrix kBradford = {{{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};

constexpr Matrix MatrixOfD50FromChannels()
{
  const Triple to = Times(kBradford, kWhiteOfD50), from = Times(kBradford, kWhiteOfD65);
  const Matrix adaptation =
    Times(Inverse(kBradford), Times(Diagonal({to[0] / from[0], to[1] / from[1], to[2] / from[2]}), kBradford));
  return Times(adaptation, Diagonal(kWhiteOfD65));
}

/// Channels of ColorModel::Xyz to XYZ on D50, Y = 1 for white, and back.
inline constexpr Matrix kD50FromXyzChannels = MatrixOfD50FromChannels();
inline constexpr Matrix kXyzChannelsFromD50 = Inverse(kD50FromXyzChannels);

} // namespace ColorSystem

// Matrices of three colours.
//
// Threads and errors: values.
#pragma once

#include "zelclr/platform/icc_file.h"

#include <array>
#include <cmath>

namespace ColorSystem::Internal {

using Matrix = std::array<std::array<double, 3>, 3>; // rows

inline Matrix ColumnsOf(const std::array<ZelUtl::IccXyz, 3> &columns)
{
  Matrix matrix;
  for (std::size_t column = 0; column < 3; ++column) {
    matrix[0][column] = columns[column].x;
    matrix[1][column] = columns[column].y;
    matrix[2][column] = columns[column].z;
  }
  return matrix;
}

/// By the adjugate; not finite for a matrix that has no inverse.
inline Matrix InverseOf(const Matrix &m)
{
  Matrix inverse;
  double determinant = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t a = (i + 1) % 3, b = (i + 2) % 3;
    for (std::size_t j = 0; j < 3; ++j) {
      const std::size_t c = (j + 1) % 3, d = (j + 2) % 3;
      inverse[j][i] = m[a][c] * m[b][d] - m[a][d] * m[b][c];
    }
  }
  for (std::size_t i = 0; i < 3; ++i)
    determinant += m[0][i] * inverse[i][0];
  for (auto &row : inverse)
    for (double &number : row)
      number /= determinant;
  return inverse;
}

inline Matrix ProductOf(const Matrix &a, const Matrix &b)
{
  Matrix product{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      for (std::size_t k = 0; k < 3; ++k)
        product[i][j] += a[i][k] * b[k][j];
  return product;
}

inline bool IsFinite(const Matrix &matrix)
{
  for (const auto &row : matrix)
    for (const double number : row)
      if (!std::isfinite(number))
        return false;
  return true;
}

} // namespace ColorSystem::Internal

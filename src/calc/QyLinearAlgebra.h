#pragma once
// Linear systems of the calculated curves: a band solver (the smoothing spline), Thomas'
// tridiagonal elimination (the interpolating spline) and a singular value decomposition (least
// squares). Failures raise EMathError with the message table's texts.
#include <cstddef>
#include <vector>

using TQyVector = std::vector<double>;
using TQyMatrix = std::vector<TQyVector>; // row first

// A band matrix of `Rows` rows stored as rows of Lower + 1 + Upper cells: cell (i, Lower) is the
// diagonal element of row i, cell (i, Lower + k) the element in column i + k.
struct TQyBandMatrix {
  TQyBandMatrix(int rows, int lower, int upper)
      : Rows(rows), Lower(lower), Upper(upper), Cells(std::size_t(rows > 0 ? rows : 0) * Width()) {}
  int Width() const { return Lower + 1 + Upper > 0 ? Lower + 1 + Upper : 0; }
  // `rows` rows of zeros, in the memory the matrix had.
  void Reset(int rows) {
    Rows = rows;
    Cells.assign(std::size_t(rows > 0 ? rows : 0) * Width(), 0.0);
  }
  double& operator()(int row, int cell) { return Cells[std::size_t(row) * Width() + cell]; }
  int Rows, Lower, Upper;
  TQyVector Cells;
};

// Solves the first n rows of `matrix` against `vector` in place, by elimination without pivoting
// (the matrix is factored in place). Needs n >= 3 and Lower + Upper <= n ("Not enough data
// points ..."), Lower, Upper >= 0. A zero pivot raises EZeroDivide.
void SolveBandMatrix(int n, TQyBandMatrix& matrix, TQyVector& vector);

// Solves the tridiagonal system of size n (lower[k] below, diagonal[k] on and upper[k] above the
// diagonal of row k) by Thomas' elimination; the solution replaces `right`. Needs n >= 2 and a
// diagonal that stays away from 0 ("Matrix is not tridiagonal").
void SolveTridiagonalEquationSystem(int n, TQyVector& lower, TQyVector& diagonal, TQyVector& right,
                                    TQyVector& upper);

// Golub-Reinsch decomposition of an M x N matrix (M >= N): A = U diag(W) V^T. `a` becomes U,
// `w` (length N) the singular values, unsorted, `v` (N x N) the right factor. A block that does not
// converge in 31 rounds is left as it stands.
void SingularValueDecomposition(TQyMatrix& a, TQyVector& w, TQyMatrix& v);
// The least-squares solution x of A x = b from the decomposition; singular values of 0 are
// left out.
TQyVector SvdBackSubstitution(const TQyMatrix& u, const TQyVector& w, const TQyMatrix& v, const TQyVector& b);
// The covariance matrix V diag(1 / W^2) V^T (zero singular values left out).
TQyMatrix SvdCovariance(const TQyVector& w, const TQyMatrix& v);

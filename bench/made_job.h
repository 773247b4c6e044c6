// Jobs of any size for measuring: every key that its format knows, values that differ by piece.
#pragma once

#include <string>
#include <tuple>

namespace bench {

constexpr int kPiecesPerBar = 8;
constexpr int kWorksPerPiece = 3;

/// What a job looks like.
struct Shape {
  int pieces = 160;             ///< in bars of eight, with three works each
  bool secondSpelling = false;  ///< JSON: the second spelling wherever a key has one
  bool headerLast = false;      ///< XML: the header's elements behind the bars
  bool distinctWorks = false;   ///< every work bears a name of its own, else there are twelve

  bool operator<(const Shape& other) const { return order() < other.order(); }

 private:
  std::tuple<int, bool, bool, bool> order() const {
    return {pieces, secondSpelling, headerLast, distinctWorks};
  }
};

/// 64 keys a piece, those of its cut and its works included.
std::string jsonJob(const Shape& shape);

/// The same job as far as XML jobs have elements for it.
std::string xmlJob(const Shape& shape);

/// The barcode of a piece, counted from 0.
std::string barCodeOf(int piece);

}  // namespace bench

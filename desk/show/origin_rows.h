// The rows that the queries make, with the origins of their values.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "desk/job/traced_job.h"
#include "desk/show/table.h"

namespace desk::show {

using Row = std::vector<Cell>;

/// Walks over a job as the queries do, in the same order. The job must outlive it.
class OriginRows {
 public:
  OriginRows(const job::TracedJob& job, bool isXml);

  std::vector<Row> bars(const std::string& number) const;
  std::vector<Row> works(const std::string& barCode) const;
  std::vector<Row> cuts(const std::string& bar) const;
  std::vector<Row> holes() const;
  std::vector<Row> labels() const;
  /// The same row `count` times.
  std::vector<Row> dimensions(const std::string& barCode, std::size_t count) const;

 private:
  const BAR_T& barAt(const job::Element& at) const;
  const PIECE_CHILD_SECOND_T& pieceAt(const job::Element& at) const;
  const job::PieceTrace& traceOf(const job::Element& at) const;
  const job::Trace<WORK_T>& workTraceOf(const job::Element& at) const;

  Cell cell(const std::string& text, job::OriginId id, const job::Element& here) const;
  Cell cell(double number, job::OriginId id, const job::Element& here) const;
  template <class Base>
  Cell bar(const job::Element& at, std::string Base::*field) const;
  template <class Base>
  Cell piece(const job::Element& at, std::string Base::*field) const;
  Cell cut(const job::Element& at, std::string PIECE_T::*field) const;

  void appendDimensions(Row& row, const std::string& barCode) const;
  Cell height() const;         ///< as get_cut tells it
  Cell materialCount() const;  ///< the same, when all cuts are asked for
  Cell barCodeOf(const std::string& barNumber, const std::string& pieceNumber) const;

  const job::TracedJob& job_;
  bool isXml_;
  bool answersAll_;                              ///< the version that the gated queries want
  std::vector<job::Element> pieces_;             ///< in file order
  std::map<std::string, job::Element> firstOf_;  ///< by barcode
  std::map<std::pair<std::string, std::string>, job::Element> lastOf_;  ///< by both numbers
};

}  // namespace desk::show

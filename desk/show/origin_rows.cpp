#include "desk/show/origin_rows.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "desk/base/number_text.h"
#include "model/job_walks.h"

namespace desk::show {

using job::Element;
using job::OriginId;

namespace {

const Cell kNone{};

Cell plain(const std::string& text) {
  return {text, false, 0.0, {}};
}

Cell asNumber(Cell cell) {
  cell.text = shortestText(std::strtod(cell.text.c_str(), nullptr));
  return cell;
}

template <class List>
const auto& nth(const List& list, int number) {
  return list[static_cast<std::size_t>(number) - 1];
}

std::size_t cutField(std::string PIECE_T::*field) {
  return field == &PIECE_T::Length ? 0 : field == &PIECE_T::sxB ? 1 : 2;
}

}  // namespace

OriginRows::OriginRows(const job::TracedJob& job, bool isXml)
    : job_(job), isXml_(isXml), answersAll_(model::declaresVersion1(job.job)) {
  Element here;
  for (const job::BarTrace& bar : job.bars) {
    ++here.bar;
    here.piece = 0;
    for (std::size_t i = 0; i < bar.pieces.size(); ++i) {
      ++here.piece;
      pieces_.push_back(here);
      firstOf_.try_emplace(pieceAt(here).BarCode, here);
      lastOf_[{barAt(here).BarNumber, pieceAt(here).PieceNumber}] = here;
    }
  }
}

std::vector<Row> OriginRows::bars(const std::string& number) const {
  std::vector<Row> rows;
  for (const Element& at : pieces_) {
    if (at.piece != 1 || (!number.empty() && barAt(at).BarNumber != number)) continue;
    rows.push_back({bar(at, &BAR_T::BarNumber), bar(at, &BAR_T::BarName), bar(at, &BAR_T::length),
                    plain(std::to_string(barAt(at).piece.size())), bar(at, &BAR_T::DXF_Name),
                    bar(at, &BAR_T::BarColor), bar(at, &BAR_T::BarLeftLength)});
  }
  return rows;
}

std::vector<Row> OriginRows::works(const std::string& barCode) const {
  std::vector<Row> rows;
  if (!answersAll_ && !barCode.empty()) return rows;
  for (Element at : pieces_) {
    if (!barCode.empty() && pieceAt(at).BarCode != barCode) continue;
    for (const WORK_T& work : pieceAt(at).work) {
      ++at.work;
      const job::Trace<WORK_T>& trace = workTraceOf(at);
      Row& row = rows.emplace_back();
      if (barCode.empty()) row.push_back(piece(at, &PIECE_T::BarCode));
      row.push_back(cell(work.Name, trace[0], at));
      row.push_back(cell(work.PositionX, trace[2], at));
      row.push_back(cell(work.PositionY, trace[3], at));
      row.push_back(cell(work.PositionZ, trace[4], at));
      appendDimensions(row, pieceAt(at).BarCode);
    }
  }
  return rows;
}

std::vector<Row> OriginRows::cuts(const std::string& number) const {
  std::vector<Row> rows;
  if (!number.empty() && !answersAll_) return rows;
  const Cell count = number.empty() ? materialCount() : plain("0");
  for (const Element& at : pieces_) {
    if (!number.empty() && barAt(at).BarNumber != number) continue;
    const std::string pieceNumber = number.empty() ? pieceAt(at).PieceNumber : "";
    rows.push_back({bar(at, &BAR_T::BarNumber), height(), bar(at, &BAR_T::length),
                    cut(at, &PIECE_T::Length), cut(at, &PIECE_T::sxB), cut(at, &PIECE_T::dxB),
                    plain(std::to_string(barAt(at).piece.size())),
                    barCodeOf(barAt(at).BarNumber, pieceNumber), bar(at, &BAR_T::BarName), count});
  }
  return rows;
}

std::vector<Row> OriginRows::holes() const {
  std::vector<Row> rows;
  if (isXml_) return rows;
  std::set<std::string> known;
  for (Element at : pieces_) {
    for (const WORK_T& work : pieceAt(at).work) {
      ++at.work;
      if (!known.insert(work.Name).second) continue;
      rows.push_back({cell(work.Name, workTraceOf(at)[0], at), asNumber(cut(at, &PIECE_T::Length)),
                      asNumber(bar(at, &BAR_T::MaxY)), asNumber(bar(at, &BAR_T::MaxZ))});
    }
  }
  return rows;
}

std::vector<Row> OriginRows::labels() const {
  std::vector<Row> rows;
  for (const Element& at : pieces_) {
    rows.push_back({piece(at, &PIECE_T::mark), bar(at, &BAR_T::DXF_Name), bar(at, &BAR_T::length),
                    bar(at, &BAR_T::BarName), bar(at, &BAR_T::BarColor), kNone, kNone,
                    bar(at, &BAR_T::BarLeftLength), kNone, kNone,
                    piece(at, &PIECE_CHILD_SECOND_T::cut_angle_convert), kNone, kNone});
  }
  return rows;
}

std::vector<Row> OriginRows::dimensions(const std::string& barCode, std::size_t count) const {
  Row row;
  appendDimensions(row, barCode);
  return std::vector<Row>(count, row);
}

const BAR_T& OriginRows::barAt(const Element& at) const {
  return nth(job_.job.Bar, at.bar);
}

const PIECE_CHILD_SECOND_T& OriginRows::pieceAt(const Element& at) const {
  return nth(barAt(at).piece, at.piece);
}

const job::PieceTrace& OriginRows::traceOf(const Element& at) const {
  return nth(nth(job_.bars, at.bar).pieces, at.piece);
}

const job::Trace<WORK_T>& OriginRows::workTraceOf(const Element& at) const {
  return nth(traceOf(at).works, at.work).keys;
}

Cell OriginRows::cell(const std::string& text, OriginId id, const Element& here) const {
  // Scripts get a text up to its first zero byte.
  Cell made = plain(text.c_str());
  if (id == 0) return made;
  const job::Origin& origin = job_.origins[id];
  made.origin = {origin.place.at.line, origin.place.at.column, !(origin.element == here),
                 describe(origin.element)};
  return made;
}

Cell OriginRows::cell(double number, OriginId id, const Element& here) const {
  return cell(shortestText(number), id, here);
}

template <class Base>
Cell OriginRows::bar(const Element& at, std::string Base::*field) const {
  return cell(barAt(at).*field, nth(job_.bars, at.bar).keys[job::fieldOf<BAR_T>(field)],
              {at.bar, 0, 0});
}

template <class Base>
Cell OriginRows::piece(const Element& at, std::string Base::*field) const {
  return cell(pieceAt(at).*field, traceOf(at).keys[job::fieldOf<PIECE_CHILD_SECOND_T>(field)],
              {at.bar, at.piece, 0});
}

Cell OriginRows::cut(const Element& at, std::string PIECE_T::*field) const {
  return cell(pieceAt(at).*field, traceOf(at).cut[cutField(field)], {at.bar, at.piece, 0});
}

void OriginRows::appendDimensions(Row& row, const std::string& barCode) const {
  const auto first = firstOf_.find(barCode);
  if (first == firstOf_.end() || !answersAll_) {
    row.insert(row.end(), 3, kNone);
    return;
  }
  row.push_back(bar(first->second, &BAR_T::MaxY));
  row.push_back(bar(first->second, &BAR_T::MaxZ));
  row.push_back(cut(first->second, &PIECE_T::Length));
}

Cell OriginRows::height() const {
  if (isXml_ || !answersAll_ || job_.job.Bar.empty()) return kNone;
  return bar(Element{1, 0, 0}, &BAR_T::MaxZ);
}

Cell OriginRows::materialCount() const {
  if (isXml_ || pieces_.empty()) return plain("0");
  const auto number = [&](const Element& at) {
    return std::strtol(barAt(at).BarNumber.c_str(), nullptr, 10);
  };
  const auto isLess = [&](const Element& a, const Element& b) { return number(a) < number(b); };
  return bar(*std::max_element(pieces_.begin(), pieces_.end(), isLess), &BAR_T::BarNumber);
}

Cell OriginRows::barCodeOf(const std::string& barNumber, const std::string& pieceNumber) const {
  const auto found = lastOf_.find({barNumber, pieceNumber});
  return isXml_ || found == lastOf_.end() ? kNone : piece(found->second, &PIECE_T::BarCode);
}

}  // namespace desk::show

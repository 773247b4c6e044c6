#include "desk/diff/job_diff.h"

#include <algorithm>
#include <map>

#include "desk/base/text.h"
#include "desk/diff/matching.h"
#include "desk/job/traced_job.h"
#include "xml/xml_elements.h"

namespace desk::diff {

namespace {

using job::FieldsOf;
using model::JobFormat;
using model::Level;

/// The XML elements that fill fields of a record.
template <class Record>
struct XmlKeys;
template <>
struct XmlKeys<DATA_T> {
  static constexpr const auto& keys = xml_elements::kHeader;
};
template <>
struct XmlKeys<BAR_T> {
  static constexpr const auto& keys = xml_elements::kBar;
};
template <>
struct XmlKeys<PIECE_CHILD_SECOND_T> {
  static constexpr const auto& keys = xml_elements::kPiece;
};
template <>
struct XmlKeys<CUT_T> {
  static constexpr const auto& keys = xml_elements::kCut;
};

template <class Record>
bool isXmlKey(const model::Key<Record>& key) {
  const auto& keys = XmlKeys<Record>::keys;
  return std::any_of(std::begin(keys), std::end(keys),
                     [&](const auto& one) { return model::fillSameField(one, key); });
}

bool isXmlKey(const json_keys::LabelKey&) {
  return false;
}

CUT_T cutOf(const PIECE_T& piece) {
  return {piece.Length, piece.sxB, piece.dxB};
}

class Comparison {
 public:
  Comparison(const Side& before, const Side& after) : before_(before), after_(after) {}

  JobDiff run() {
    Difference header{Kind::Changed, Level::Header, before_.job.Name};
    addFields(before_.job, after_.job, FieldsOf<DATA_T>::keys, header);
    addOrder("order of bars", bars_.toAfter, 0, before_.job.Bar, after_.job.Bar, barName, header);
    keep(std::move(header));
    addBars();
    addPieces();
    for (auto& [level, keys] : unknown_) {
      diff_.unknown.push_back({JobFormat::Xml, level, std::move(keys)});
    }
    return std::move(diff_);
  }

 private:
  static std::string barName(const BAR_T& bar) { return bar.BarNumber; }
  static std::string pieceName(const PlacedPiece& piece) {
    if (piece.hasBarCode) return piece.piece->BarCode;
    return piece.piece->PieceNumber;
  }

  static Spot spotOf(const BAR_T& bar, std::size_t index) {
    return {{static_cast<int>(index) + 1, 0, 0}, bar.BarNumber};
  }
  static Spot spotOf(const PlacedPiece& piece) { return {piece.at, piece.bar->BarNumber}; }

  void keep(Difference&& difference) {
    if (difference.kind == Kind::Changed && difference.changes.empty()) return;
    diff_.differences.push_back(std::move(difference));
  }

  template <class Record, class Keys>
  void addFields(const Record& before, const Record& after, const Keys& keys, Difference& to) {
    for (const auto& key : keys) {
      const std::string old = job::textOf(before, key);
      const std::string now = job::textOf(after, key);
      if (old == now) continue;
      if (before_.format != after_.format && !isXmlKey(key)) {
        std::vector<std::string>& unknown = unknown_[to.level];
        if (!contains(unknown, key.spelling)) unknown.emplace_back(key.spelling);
      } else {
        to.changes.push_back({"", key.spelling, old, now});
      }
    }
  }

  /// Tells when partners come in another order.
  /// @param partners of a stretch of the old elements, whose first has the index `first`
  template <class Elements, class NameOf>
  void addOrder(const char* key, const std::vector<int>& partners, std::size_t first,
                const Elements& before, const Elements& after, NameOf nameOf, Difference& to) {
    if (!isReordered(partners)) return;
    std::vector<std::string> old;
    std::vector<int> sorted;
    for (std::size_t i = 0; i < partners.size(); ++i) {
      if (partners[i] < 0) continue;
      old.push_back(nameOf(before[first + i]));
      sorted.push_back(partners[i]);
    }
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::string> now;
    now.reserve(sorted.size());
    for (const int partner : sorted)
      now.push_back(nameOf(after[static_cast<std::size_t>(partner)]));
    to.changes.push_back({"", key, joined(old, ", "), joined(now, ", ")});
  }

  void addBars() {
    std::size_t firstPiece = 0;
    for (std::size_t i = 0; i < before_.job.Bar.size(); ++i) {
      const BAR_T& bar = before_.job.Bar[i];
      Difference difference{Kind::Gone, Level::Bar, bar.BarNumber, spotOf(bar, i)};
      if (bars_.toAfter[i] >= 0) addBar(bar, firstPiece, bars_.toAfter[i], difference);
      keep(std::move(difference));
      firstPiece += bar.piece.size();
    }
    for (std::size_t i = 0; i < after_.job.Bar.size(); ++i) {
      if (bars_.toBefore[i] >= 0) continue;
      const BAR_T& bar = after_.job.Bar[i];
      keep({Kind::Added, Level::Bar, bar.BarNumber, {}, spotOf(bar, i)});
    }
  }

  void addBar(const BAR_T& old, std::size_t firstPiece, int partner, Difference& to) {
    const auto index = static_cast<std::size_t>(partner);
    const BAR_T& now = after_.job.Bar[index];
    to.kind = Kind::Changed;
    to.after = spotOf(now, index);
    addFields(old, now, FieldsOf<BAR_T>::keys, to);
    addOrder("order of pieces", partnersOn(old, firstPiece, partner + 1), firstPiece, oldPieces_,
             newPieces_, pieceName, to);
  }

  /// The partners of a bar's pieces on its own partner; -1 where they lie elsewhere.
  std::vector<int> partnersOn(const BAR_T& oldBar, std::size_t first, int newBar) const {
    std::vector<int> partners(oldBar.piece.size(), -1);
    for (std::size_t i = 0; i < partners.size(); ++i) {
      const int partner = pieces_.toAfter[first + i];
      if (partner < 0) continue;
      if (newPieces_[static_cast<std::size_t>(partner)].at.bar == newBar) partners[i] = partner;
    }
    return partners;
  }

  void addPieces() {
    for (std::size_t i = 0; i < oldPieces_.size(); ++i) {
      const PlacedPiece& old = oldPieces_[i];
      const int partner = pieces_.toAfter[i];
      Difference difference{Kind::Gone, Level::Piece, pieceName(old), spotOf(old)};
      if (partner >= 0) addPiece(old, newPieces_[static_cast<std::size_t>(partner)], difference);
      keep(std::move(difference));
    }
    for (std::size_t i = 0; i < newPieces_.size(); ++i) {
      if (pieces_.toBefore[i] >= 0) continue;
      const PlacedPiece& now = newPieces_[i];
      keep({Kind::Added, Level::Piece, pieceName(now), {}, spotOf(now)});
    }
  }

  void addPiece(const PlacedPiece& old, const PlacedPiece& now, Difference& to) {
    to.after = spotOf(now);
    to.isByNumber = !old.hasBarCode;
    to.kind = bars_.toAfter[static_cast<std::size_t>(old.at.bar - 1)] + 1 == now.at.bar
                  ? Kind::Changed
                  : Kind::Moved;
    addFields(*old.piece, *now.piece, FieldsOf<PIECE_CHILD_SECOND_T>::keys, to);
    addFields(cutOf(*old.piece), cutOf(*now.piece), FieldsOf<CUT_T>::keys, to);
    addFields(old.piece->Fields, now.piece->Fields, FieldsOf<FIELD_T>::keys, to);
    std::vector<Change> works = compareWorks(old.piece->work, now.piece->work);
    std::move(works.begin(), works.end(), std::back_inserter(to.changes));
  }

  Side before_;
  Side after_;
  std::vector<PlacedPiece> oldPieces_ = piecesOf(before_.job);
  std::vector<PlacedPiece> newPieces_ = piecesOf(after_.job);
  Matching bars_ = matchBars(before_.job, after_.job);
  Matching pieces_ = matchPieces(oldPieces_, newPieces_);
  JobDiff diff_;
  std::map<Level, std::vector<std::string>> unknown_;
};

}  // namespace

const char* nameOf(Kind kind) {
  switch (kind) {
    case Kind::Added:
      return "added";
    case Kind::Gone:
      return "gone";
    case Kind::Changed:
      return "changed";
    case Kind::Moved:
      break;
  }
  return "moved";
}

JobDiff compare(const Side& before, const Side& after) {
  return Comparison(before, after).run();
}

}  // namespace desk::diff

#include "desk/job/oddities.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <initializer_list>
#include <map>
#include <tuple>
#include <utility>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/job/bar_layout.h"
#include "desk/job/traced_job.h"
#include "xml/xml_elements.h"

namespace desk::job {

namespace {

using model::JobFormat;
using model::TextForm;

/// A field that is looked at, by its place in its record and its name in each format.
struct Field {
  Level level;
  std::size_t index;
  const char* keys[std::size(model::kJobFormats)];
};

template <class Record, std::size_t count, class Member>
constexpr Field fieldNamedBy(const model::Key<Record> (&elements)[count], model::KeyKind kind,
                             Member member) {
  const model::Key<Record> wanted{nullptr, nullptr, kind, member};
  const std::size_t index = fieldOf(wanted);
  Field field{FieldsOf<Record>::level, index, {FieldsOf<Record>::keys[index].spelling, ""}};
  for (const model::Key<Record>& element : elements) {
    if (model::fillSameField(element, wanted)) field.keys[1] = element.spelling;
  }
  return field;
}

template <class Record, std::size_t count>
constexpr Field textField(const model::Key<Record> (&elements)[count],
                          std::string Record::*member) {
  return fieldNamedBy(elements, model::KeyKind::Text, member);
}

constexpr Field numberField(double WORK_T::*member) {
  return fieldNamedBy(xml_elements::kWork, model::KeyKind::Number, member);
}

constexpr Field kUnit = textField(xml_elements::kHeader, &DATA_T::Unit);
constexpr Field kBarLength = textField(xml_elements::kBar, &BAR_T::length);
constexpr Field kWidth = textField(xml_elements::kBar, &BAR_T::MaxY);
constexpr Field kHeight = textField(xml_elements::kBar, &BAR_T::MaxZ);
constexpr Field kLeftOver = textField(xml_elements::kBar, &BAR_T::BarLeftLength);
constexpr Field kBarNumber = textField(xml_elements::kBar, &BAR_T::BarNumber);
constexpr Field kPieceNumber =
    textField<PIECE_CHILD_SECOND_T>(xml_elements::kPiece, &PIECE_T::PieceNumber);
constexpr Field kCount = textField<PIECE_CHILD_SECOND_T>(xml_elements::kPiece, &PIECE_T::Num);
constexpr Field kPieceLength = textField(xml_elements::kCut, &CUT_T::Length);
constexpr Field kLeftAngle = textField(xml_elements::kCut, &CUT_T::sxB);
constexpr Field kRightAngle = textField(xml_elements::kCut, &CUT_T::dxB);
constexpr Field kWorkName = textField(xml_elements::kWork, &WORK_T::Name);
constexpr Field kSide = numberField(&WORK_T::ProfiLav);
constexpr Field kX = numberField(&WORK_T::PositionX);
constexpr Field kY = numberField(&WORK_T::PositionY);
constexpr Field kZ = numberField(&WORK_T::PositionZ);

/// Judges one bar.
class Judge {
 public:
  Judge(const BarPlace& bar, int number, JobFormat format)
      : bar_(bar),
        height_(measureOf(bar.bar->MaxZ).value),
        format_(static_cast<std::size_t>(format)),
        here_{number, 0, 0} {}

  Oddities run() {
    judgeBar();
    for (const PiecePlace& piece : bar_.pieces) {
      ++here_.piece;
      judgePiece(piece);
      for (const WORK_T& work : piece.piece->work) {
        ++here_.work;
        judgeWork(work, piece);
      }
      here_.work = 0;
    }
    weighCauses();
    return std::move(found_);
  }

 private:
  JobValue valueOf(const Field& field) const {
    const bool isOfWork = field.level == Level::Work;
    const Element element{here_.bar, field.level == Level::Bar ? 0 : here_.piece,
                          isOfWork ? here_.work : 0};
    return {element, field.level, field.index, field.keys[format_]};
  }

  Oddity& add(const char* rule, Severity severity, const Field& field, const std::string& text,
              std::initializer_list<Field> others = {}) {
    Oddity& oddity = found_.emplace_back(Oddity{rule, severity, valueOf(field), text});
    for (const Field& other : others) oddity.others.push_back(valueOf(other));
    return oddity;
  }

  /// Lets each cause weigh as much as what comes of it.
  void weighCauses() {
    using Key = std::tuple<int, int, Level, std::size_t>;  // all causes are above works
    const auto keyOf = [](const JobValue& value) {
      return Key{value.element.bar, value.element.piece, value.level, value.field};
    };
    std::map<Key, Oddity*> causes;
    for (Oddity& one : found_) {
      if (one.value.element.work == 0 && tellsMisread(one.rule)) {
        causes.emplace(keyOf(one.value), &one);
      }
    }
    if (causes.empty()) return;
    for (const Oddity& one : found_) {
      for (const JobValue& other : one.others) {
        const auto found = causes.find(keyOf(other));
        if (found == causes.end()) continue;
        found->second->overall = std::max(found->second->overall, one.severity);
        break;
      }
    }
  }

  /// ": "Length" is 0", or with quotation marks where it is more than a number.
  std::string isText(const Field& field, const std::string& value) const {
    const Measure measure = measureOf(value);
    const bool isPlain = shortestText(measure.value) == value;
    return isText(field) + (isPlain ? value : quoted(value));
  }
  std::string isText(const Field& field) const {
    return ": \"" + std::string(field.keys[format_]) + "\" is ";
  }

  /// Judges a text that must be a number. Returns whether it can be taken for one.
  bool judgeNumber(const Field& field, const std::string& text, Drawn drawn) {
    using Form = Measure::Form;
    const Measure measure = measureOf(text);
    if (measure.form == Form::Plain) return true;
    const std::string read = "; some read " + shortestText(measure.value) + ", tonumber gives nil";
    switch (measure.form) {
      case Form::Plain:
        break;
      case Form::Missing:
        add(rules::kNotANumber, Severity::Error, field,
            " has no \"" + std::string(field.keys[format_]) + "\"")
            .drawn = drawn;
        return false;
      case Form::NoNumber:
        add(rules::kNotANumber, Severity::Error, field,
            isText(field, text) + ", " + refusalOf(text))
            .drawn = drawn;
        return false;
      case Form::Trailing:
        add(rules::kNotANumber, Severity::Warning, field, isText(field, text) + read);
        return true;
      case Form::DecimalComma:
        add(rules::kDecimalComma, Severity::Error, field, isText(field, text) + read);
        return true;
      case Form::Points:
        add(rules::kThousandsPoint, Severity::Error, field, isText(field, text) + read);
        break;
    }
    return true;
  }

  /// Judges a length or a size that is a number.
  void judgeSize(const char* rule, const Field& field, const std::string& text,
                 const std::string& because, Drawn drawn) {
    const Measure measure = measureOf(text);
    if (measure.isA(TextForm::Size)) return;
    const bool isLong = measure.value > Measure::kLongest;
    add(rule, Severity::Error, field,
        isText(field, text) + (isLong ? ", more than any machine takes" : because))
        .drawn = drawn;
  }

  void judgeLarge(const Field& field, const std::string& text, const char* how) {
    const double size = measureOf(text).value;
    if (size <= kLargestProfile || size > Measure::kLongest) return;
    add(rules::kProfileSize, Severity::Warning, field,
        isText(field, text) + ", but no profile is so " + how);
  }

  void judgeThousands(const Field& field, const std::string& text, double longest) {
    if (!looksLikeThousands(text, longest)) return;
    add(rules::kThousandsPoint, Severity::Warning, field,
        isText(field, text) + ", read as " + shortestText(measureOf(text).value) +
            "; a point is no thousands separator");
  }

  /// Judges a text that must be a whole number, if there is one.
  void judgeCount(const Field& field, const std::string& text, Severity gravest) {
    if (text.empty()) return;
    const std::size_t from = found_.size();
    if (judgeNumber(field, text, Drawn::AsItIs) && found_.size() == from) {
      const double number = measureOf(text).value;
      const bool isWhole = number == std::floor(number);
      if (isWhole && number >= 0.0) return;
      add(rules::kNotANumber, isWhole ? Severity::Warning : gravest, field,
          isText(field, text) + (isWhole ? ", and numbers count from 0" : ", no whole number"));
    }
    lower(from, gravest);
  }

  /// Lets what was found from an index on weigh no more than that.
  void lower(std::size_t from, Severity gravest) {
    for (std::size_t i = from; i < found_.size(); ++i) {
      found_[i].severity = found_[i].overall = std::min(found_[i].severity, gravest);
    }
  }

  void judgeBar() {
    const BAR_T& bar = *bar_.bar;
    judgeCount(kBarNumber, bar.BarNumber, Severity::Error);
    if (judgeNumber(kBarLength, bar.length, Drawn::WithoutEnds)) {
      judgeSize(rules::kLength, kBarLength, bar.length, ", nothing to cut from",
                Drawn::WithoutEnds);
      judgeThousands(kBarLength, bar.length, kLongestBar);
    }
    if (judgeNumber(kWidth, bar.MaxY, Drawn::OfUsualWidth)) {
      judgeSize(rules::kProfileSize, kWidth, bar.MaxY, ", but a profile has a width",
                Drawn::OfUsualWidth);
      judgeLarge(kWidth, bar.MaxY, "wide");
    }
    if (!bar.MaxZ.empty() && judgeNumber(kHeight, bar.MaxZ, Drawn::AsItIs)) {
      judgeSize(rules::kProfileSize, kHeight, bar.MaxZ, ", but a profile has a height",
                Drawn::AsItIs);
      judgeLarge(kHeight, bar.MaxZ, "high");
    }
    judgeLeftOver(bar);
    judgeTogether();
  }

  void judgeLeftOver(const BAR_T& bar) {
    const std::size_t from = found_.size();
    if (bar.BarLeftLength.empty()) return;
    const bool isNumber = judgeNumber(kLeftOver, bar.BarLeftLength, Drawn::AsItIs);
    lower(from, Severity::Warning);
    if (!isNumber) return;
    const Measure stated = measureOf(bar.BarLeftLength);
    const double rest = bar_.leftOver() + bar_.shared;
    std::string but;
    if (stated.value < 0.0) {
      but = ", less than nothing";
    } else if (bar_.length > 0.0 && stated.value > bar_.length) {
      but = ", the bar " + shortestText(bar_.length) + " long";
    } else if (bar_.length > 0.0 && rest >= 0.0 && stated.value >= rest + kLeftOverRounding) {
      but = ", but the pieces leave " + hundredthsText(rest);
    }
    if (but.empty()) return;
    add(rules::kLeftOver, Severity::Warning, kLeftOver, isText(kLeftOver, bar.BarLeftLength) + but,
        {kBarLength});
  }

  bool isTooLong(const PiecePlace& piece) const {
    return bar_.length > 0.0 && piece.length > bar_.length + kTolerance;
  }

  void judgeTogether() {
    double sum = 0.0;
    std::size_t count = 0;
    for (const PiecePlace& piece : bar_.pieces) {
      if (isTooLong(piece)) continue;
      sum += piece.length;
      ++count;
    }
    if (bar_.length == 0.0 || sum <= bar_.length + kTolerance) return;
    const bool mayFit =
        count == bar_.pieces.size() && sum - bar_.shared <= bar_.length + kTolerance;
    add(rules::kDoesNotFit, mayFit ? Severity::Warning : Severity::Error, kBarLength,
        ": its " + countText(count, "piece") + " are " + hundredthsText(sum) +
            " long together, the bar " + shortestText(bar_.length) +
            (mayFit ? "; they fit only where slanted ends of neighbours nest" : ""),
        {kBarLength});
  }

  void judgePiece(const PiecePlace& piece) {
    const PIECE_T& record = *piece.piece;
    judgeCount(kPieceNumber, record.PieceNumber, Severity::Error);
    judgeCount(kCount, record.Num, Severity::Warning);
    if (judgeNumber(kPieceLength, record.Length, Drawn::LeftOut)) {
      judgeSize(rules::kLength, kPieceLength, record.Length, ", nothing to cut", Drawn::LeftOut);
      judgeThousands(kPieceLength, record.Length, bar_.length > 0.0 ? bar_.length : kLongestBar);
    }
    if (isTooLong(piece)) {
      add(rules::kDoesNotFit, Severity::Error, kPieceLength,
          isText(kPieceLength, record.Length) + ", the bar " + shortestText(bar_.length) + " long",
          {kPieceLength, kBarLength});
    }
    judgeAngle(kLeftAngle, record.sxB);
    judgeAngle(kRightAngle, record.dxB);
    if (measureOf(record.dxB).value == kRightAngle135) {
      add(rules::kAngle135, Severity::Note, kRightAngle,
          isText(kRightAngle, record.dxB) + " and stays so; \"135\" in a JSON job becomes \"45\"");
    }
    if (piece.tooShortBy > 0.0 && bar_.isWidthKnown) {
      add(rules::kAngle, Severity::Error, kPieceLength,
          isText(kPieceLength, record.Length) + ", but its angles take " +
              hundredthsText(piece.length + piece.tooShortBy) + " at a width of " +
              shortestText(bar_.width),
          {kPieceLength, kLeftAngle, kRightAngle, kWidth})
          .drawn = piece.outline.size() == 3 ? Drawn::CutOff : Drawn::Square;
    }
  }

  void judgeAngle(const Field& field, const std::string& text) {
    if (!judgeNumber(field, text, Drawn::Square)) return;
    if (measureOf(text).isA(TextForm::Angle)) return;
    add(rules::kAngle, Severity::Error, field,
        isText(field, text) + ", not between 0 and 180 degrees")
        .drawn = Drawn::Square;
  }

  void judgeWork(const WORK_T& work, const PiecePlace& piece) {
    const std::size_t from = found_.size();
    if (work.Name.empty()) {
      add(rules::kEmptyName, Severity::Warning, kWorkName, isText(kWorkName) + "empty");
    }
    judgeSide(work);
    judgePlace(work, piece);
    if (found_.size() == from || work.Name.empty()) return;
    const std::string name = " (" + quoted(work.Name) + ")";
    for (std::size_t i = from; i < found_.size(); ++i) found_[i].text.insert(0, name);
  }

  void judgeSide(const WORK_T& work) {
    const model::Range sides = model::rangeOf(TextForm::Side);
    if (sides.holds(work.ProfiLav) && work.ProfiLav == std::floor(work.ProfiLav)) return;
    add(rules::kSide, Severity::Warning, kSide,
        isText(kSide) + shortestText(work.ProfiLav) + "; sides are numbered from 0 or 1 to " +
            shortestText(sides.most));
  }

  void judgePlace(const WORK_T& work, const PiecePlace& piece) {
    if (piece.length > 0.0) {
      judgePosition(rules::kWorkBesidePiece, Severity::Error, kX, work.PositionX, kPieceLength,
                    piece.length, "the piece", "long");
    }
    judgePosition(rules::kWorkOutsideProfile, Severity::Warning, kY, work.PositionY, kWidth,
                  bar_.width, "the profile", "wide");
    judgePosition(rules::kWorkOutsideProfile, Severity::Warning, kZ, work.PositionZ, kHeight,
                  height_ > 0.0 ? height_ : Measure::kLongest, "the profile", "high");
    if (!piece.works.empty() && bar_.isWidthKnown) {
      judgeCorner(piece.works[static_cast<std::size_t>(here_.work - 1)], piece);
    }
  }

  void judgePosition(const char* rule, Severity severity, const Field& field, double position,
                     const Field& limit, double size, const char* whole, const char* how) {
    if (position >= -kRounding && position <= size + kRounding) return;
    const Drawn drawn = field.index == kZ.index ? Drawn::AsItIs : Drawn::LeftOut;
    const std::string is = isText(field) + shortestText(position);
    if (!std::isfinite(position)) {
      add(rules::kNotANumber, Severity::Error, field, is + ", no number").drawn = drawn;
    } else if (position < -kRounding) {
      add(rule, severity, field, is + ", and " + whole + " begins at 0").drawn = drawn;
    } else {
      add(rule, severity, field, is + ", " + whole + " " + shortestText(size) + " " + how, {limit})
          .drawn = drawn;
    }
  }

  void judgeCorner(const WorkPlace& work, const PiecePlace& piece) {
    const bool isLeft = work.lies == WorkPlace::Lies::InLeftCorner;
    if (!isLeft && work.lies != WorkPlace::Lies::InRightCorner) return;
    const double x = work.work->PositionX;
    const double angle = isLeft ? piece.leftAngle : piece.rightAngle;
    const double off =
        inwardsAt(work.work->PositionY, bar_.width, angle) - (isLeft ? x : piece.length - x);
    add(rules::kWorkInCorner, Severity::Note, kX,
        isText(kX) + shortestText(x) + ", " + hundredthsText(off) + " off the " +
            (isLeft ? "left" : "right") + " cut of " + shortestText(angle) + " degrees at Y " +
            shortestText(work.work->PositionY),
        {kPieceLength, isLeft ? kLeftAngle : kRightAngle, kWidth, kY});
  }

  static constexpr double kLargestProfile = 1000.0;  ///< of those that are in trade, mm
  static constexpr double kLeftOverRounding = 1.0;   ///< mm
  static constexpr double kRightAngle135 = 135.0;

  const BarPlace& bar_;
  double height_;  ///< of the profile; 0 where it is not known
  std::size_t format_;
  Element here_;
  Oddities found_;
};

/// Whether a unit that is spelt in another way than usual is the millimetre.
bool meansMillimetre(const std::string& unit) {
  constexpr std::string_view kNames[] = {"mm",          "mms",        "millimeter",
                                         "millimeters", "millimetre", "millimetres"};
  std::string name;
  for (const char byte : unit) {
    if (byte != ' ' && byte != '.')
      name += static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
  }
  return contains(kNames, name);
}

}  // namespace

bool tellsMisread(std::string_view rule) {
  constexpr std::string_view kRules[] = {rules::kNotANumber, rules::kDecimalComma,
                                         rules::kThousandsPoint, rules::kLength,
                                         rules::kProfileSize};
  return contains(kRules, rule);
}

Oddities headerOddities(const DATA_T& job, JobFormat format) {
  if (job.Unit.empty() || contains(model::kMillimetres, job.Unit)) return {};
  const bool isMillimetre = meansMillimetre(job.Unit);
  const char* const key = kUnit.keys[static_cast<std::size_t>(format)];
  return {{rules::kUnit,
           isMillimetre ? Severity::Note : Severity::Error,
           {{}, kUnit.level, kUnit.index, key},
           ": \"" + std::string(key) + "\" is " + quoted(job.Unit) +
               (isMillimetre ? ", which jobs write as \"mm\""
                             : ", and every length is taken as millimetres")}};
}

void judge(BarPlace& bar, int number, JobFormat format) {
  bar.number = number;
  bar.oddities = Judge(bar, number, format).run();
}

}  // namespace desk::job

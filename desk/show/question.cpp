#include "desk/show/question.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace desk::show {

namespace {

/// How many rows a piece has in the answer to everything.
std::size_t rowsOf(const PIECE_T& piece, Subject subject) {
  return subject == Subject::Works ? piece.work.size() : 1;
}

/// For each row of the answer to everything, whether its bar and piece are meant.
std::vector<bool> meantRows(const Question& question, const DATA_T& job) {
  const job::Selection selection{question.bar, question.barCode};
  std::vector<bool> rows;
  for (const BAR_T& bar : job.Bar) {
    bool isMeant = false;
    for (const PIECE_T& piece : bar.piece) {
      const bool isOne = selection.has(bar) && selection.has(piece);
      isMeant = isMeant || isOne;
      if (question.subject == Subject::Bars) continue;
      rows.insert(rows.end(), rowsOf(piece, question.subject), isOne);
    }
    if (question.subject == Subject::Bars && !bar.piece.empty()) rows.push_back(isMeant);
  }
  return rows;
}

bool selectsItself(const Question& question) {
  const Question asked = panelQuestion(question);
  return asked.bar == question.bar && asked.barCode == question.barCode;
}

}  // namespace

Question panelQuestion(const Question& question) {
  const auto& [subject, barCode, bar] = question;
  const bool byBar = subject == Subject::Cuts && barCode.empty();
  const bool byBarCode =
      subject == Subject::Dimensions || (subject == Subject::Works && bar.empty());
  return {subject, byBarCode ? barCode : "", byBar ? bar : ""};
}

void narrow(TextTable& answer, const Question& question, const DATA_T& job) {
  if (selectsItself(question)) return;
  const std::vector<bool> isMeant = meantRows(question, job);
  if (isMeant.size() != answer.rows.size()) {
    throw std::logic_error("show: the plug-in answers with other rows than this cusdesk knows");
  }
  std::size_t row = 0;
  answer.rows.erase(std::remove_if(answer.rows.begin(), answer.rows.end(),
                                   [&](const auto&) { return !isMeant[row++]; }),
                    answer.rows.end());
}

std::string remarkOn(const TextTable& answer, const Question& question) {
  const bool isOneBar = question.subject == Subject::Cuts && !panelQuestion(question).bar.empty();
  if (isOneBar && !answer.rows.empty()) {
    return "as on the panel, get_cut(\"" + question.bar +
           "\") leaves BarCode empty and MaterialCount 0; the table 'pieces' has the barcodes";
  }
  if (question.subject == Subject::Dimensions && answer.rows.empty()) {
    return "as on the panel, get_Dimensions answers only for the piece whose works are the last of "
           "the job; the table 'works' has the same dimensions";
  }
  return "";
}

}  // namespace desk::show

// What cannot be right about the measures of a job: one list for check, drawings and the page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desk/job/rules.h"
#include "desk/job/source_text.h"
#include "model/job_format.h"
#include "model/job_records.h"
#include "model/key_table.h"

namespace desk::job {

struct BarPlace;

/// What a drawing makes of an oddity.
enum class Drawn { AsItIs, LeftOut, Square, CutOff, OfUsualWidth, WithoutEnds };

/// Where a value of a job is.
struct JobValue {
  Element element;     ///< whose value it is
  model::Level level;  ///< of the key table that the value's key stands in
  std::size_t field;   ///< of the level's record, see FieldsOf
  const char* key;     ///< as the format spells it
};

/// A value of a job that ought to be another one.
struct Oddity {
  const char* rule;   ///< an id of the rule table
  Severity severity;  ///< by itself
  JobValue value;
  std::string text;  ///< what is so, to be put behind the element's name: ": \"Length\" is \"0\""
  Drawn drawn = Drawn::AsItIs;
  std::vector<JobValue> others{};  ///< what else it is judged by
  Severity overall = severity;     ///< the gravest one of it and of what comes of it
};

/// Whether what a rule tells of a value may be why other rules tell of what is judged by it.
bool tellsMisread(std::string_view rule);

using Oddities = std::vector<Oddity>;

/// Of the header.
Oddities headerOddities(const DATA_T& job, model::JobFormat format);

/// Adds to a bar what is odd about it, its pieces and its works, in the order of the job.
/// @param number of the bar in the job, from 1
void judge(BarPlace& bar, int number, model::JobFormat format);

}  // namespace desk::job

#include <histedit.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <filesystem>

#include "desk/base/files.h"
#include "desk/base/terminal.h"
#include "desk/repl/interrupt.h"
#include "desk/repl/line_source.h"
#include "desk/repl/prompt_code.h"

namespace desk::repl {

namespace {

namespace fs = std::filesystem;

constexpr int kHistoryLines = 1000;

/// Where programs keep such things of the user. Empty when there is no such place.
fs::path historyFile() {
  const auto folder = [](const char* name) -> fs::path {
    const char* value = std::getenv(name);
    return value == nullptr || *value != '/' ? "" : value;
  };
  fs::path state = folder("XDG_STATE_HOME");
  if (state.empty() && !folder("HOME").empty()) state = folder("HOME") / ".local/state";
  return state.empty() ? state : state / "cusdesk/repl_history";
}

/// The characters of the user's terminal. Where nothing is set they are taken to be UTF-8, which is
/// what jobs and scripts are written in.
void setCharacters() {
  const char* chosen = std::setlocale(LC_CTYPE, "");
  if (chosen == nullptr || std::string(chosen) == "C" || std::string(chosen) == "POSIX") {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
}

bool isBlank(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

/// The words in as many columns as the terminal has room for.
void list(const std::vector<std::string>& words) {
  std::size_t width = 1;
  for (const std::string& word : words) width = std::max(width, displayWidth(word) + 2);
  const std::size_t perLine = std::max<std::size_t>(terminalOf(stdout).columns / width, 1);
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::fputs(i % perLine == 0 ? "\n" : "", stdout);
    std::fputs(padded(words[i], width).c_str(), stdout);
  }
  std::fputs("\n", stdout);
  std::fflush(stdout);
}

}  // namespace

/// The library's editor and its history.
class TerminalLines::Editor {
 public:
  explicit Editor(const PromptCode& code)
      : code_(code), editor_(el_init("cusdesk", stdin, stdout, stderr)), history_(history_init()) {
    HistEvent event;
    history(history_, &event, H_SETSIZE, kHistoryLines);
    history(history_, &event, H_SETUNIQUE, 1);
    openHistory();
    constexpr char* kEnd = nullptr;
    el_set(editor_, EL_CLIENTDATA, this);
    el_set(editor_, EL_PROMPT, promptOf);
    el_set(editor_, EL_EDITOR, "emacs");
    el_set(editor_, EL_SIGNAL, 1);
    el_set(editor_, EL_GETCFN, readCharacter);
    el_set(editor_, EL_HIST, history, history_);
    // by the wide call: the other one keeps copies that it never frees
    el_wset(editor_, EL_ADDFN, L"lua-complete", L"Completes a name", completeAt);
    el_set(editor_, EL_BIND, "^I", "lua-complete", kEnd);
    el_set(editor_, EL_BIND, "^R", "em-inc-search-prev", kEnd);
    el_source(editor_, nullptr);  // what the user has chosen instead
  }

  ~Editor() {
    history_end(history_);
    el_end(editor_);
  }
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  Reading read(const std::string& prompt, std::string& line) {
    prompt_ = prompt;
    std::fflush(stdout);
    int size = 0;
    const NotedInterrupt interrupt;
    interrupt_ = &interrupt;
    // The editor itself would prepare the terminal after the prompt: what is typed in between, a
    // Ctrl-D for one, would reach it as something else.
    el_set(editor_, EL_PREP_TERM, 1);
    const char* typed = el_gets(editor_, &size);
    if (interrupt.noted() || typed == nullptr || size <= 0) {
      std::fputs("\n", stdout);
      return interrupt.noted() ? Reading::Interrupted : Reading::Eof;
    }
    line.assign(typed, static_cast<std::size_t>(size));
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    remember(line);
    return Reading::Line;
  }

 private:
  void openHistory() {
    file_ = historyFile();
    if (file_.empty()) return;
    std::error_code ignored;
    fs::create_directories(file_.parent_path(), ignored);
    file_ = fs::weakly_canonical(file_, ignored);  // what a link names is replaced, not the link
    if (fs::exists(file_, ignored) && !fs::is_regular_file(file_, ignored)) file_.clear();
    HistEvent event;
    if (!file_.empty()) history(history_, &event, H_LOAD, file_.c_str());
  }

  /// Saved with each line: a script may end the program at any time.
  void remember(const std::string& line) {
    if (isBlank(line)) return;
    HistEvent event;
    history(history_, &event, H_ENTER, line.c_str());
    if (!file_.empty()) save();
  }

  /// In one step: a full disk or a sudden end leaves the lines of before.
  void save() {
    TemporaryFile file;
    std::string ignored;
    if (file.create(file_, ignored) && writeTo(file.path())) file.commit(ignored);
  }

  bool writeTo(const std::string& path) {
    std::FILE* const file = std::fopen(path.c_str(), "w");
    if (file == nullptr) return false;
    HistEvent event;
    const bool taken = history(history_, &event, H_SAVE_FP, file) >= 0;
    const bool written = std::ferror(file) == 0;
    return std::fclose(file) == 0 && taken && written;
  }

  static Editor& of(EditLine* editor) {
    void* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *static_cast<Editor*>(self);
  }

  /// Reads one character, as the editor's own function does, but loses no Ctrl-C.
  static int readCharacter(EditLine* editor, wchar_t* character) {
    std::mbstate_t state{};
    for (;;) {
      char byte = '\0';
      if (!of(editor).interrupt_->waitForInput(STDIN_FILENO)) return -1;
      const ssize_t size = ::read(STDIN_FILENO, &byte, 1);
      if (size <= 0) return static_cast<int>(size);
      const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
      if (used <= 1) return 1;
      if (used == static_cast<std::size_t>(-1)) state = {};  // no character: passed over
    }
  }

  static char* promptOf(EditLine* editor) { return of(editor).prompt_.data(); }

  static unsigned char completeAt(EditLine* editor, wint_t) {
    const LineInfo* info = el_line(editor);
    const std::string before(info->buffer, info->cursor);
    if (isBlank(before)) return el_insertstr(editor, "  ") == 0 ? CC_REFRESH : CC_ERROR;
    const Completions found = of(editor).code_.complete(before);
    if (found.words.empty()) return CC_ERROR;
    const std::string rest = found.common().substr(found.typed);
    if (!rest.empty()) return el_insertstr(editor, rest.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
    if (found.words.size() == 1) return CC_ERROR;
    list(found.words);
    return CC_REDISPLAY;
  }

  const PromptCode& code_;
  EditLine* editor_;
  History* history_;
  fs::path file_;
  std::string prompt_;
  const NotedInterrupt* interrupt_ = nullptr;  ///< of the read at hand
};

TerminalLines::TerminalLines(const PromptCode& code) {
  setCharacters();
  editor_ = std::make_unique<Editor>(code);
}

TerminalLines::~TerminalLines() = default;

Reading TerminalLines::read(const std::string& prompt, std::string& line) {
  return editor_->read(prompt, line);
}

}  // namespace desk::repl

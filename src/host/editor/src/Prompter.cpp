// The host's prompt conventions.
#include "host/editor/Prompter.h"

#include "host/editor/AnswerParsing.h"

namespace host {

using platform::PromptStatus;

std::wstring keywordPrompt(const std::wstring& message, const Keywords& keywords,
                           const std::optional<std::wstring>& defaultKeyword) {
  std::wstring prompt = message;
  if (!prompt.empty()) prompt += L' ';
  prompt += L'[';
  for (std::size_t i = 0; i < keywords.size(); ++i) {
    if (i > 0) prompt += L'/';
    prompt += keywords[i];
  }
  prompt += L']';
  if (defaultKeyword) prompt += L" <" + *defaultKeyword + L'>';
  prompt += L": ";
  return prompt;
}

platform::StringReply Prompter::ask(const std::wstring& prompt, const Keywords& completions,
                                    Console::Answers answers) {
  std::optional<std::wstring> line;
  if (cancelPosted_) {
    cancelPosted_ = false;
    ++cancels_;
    console_.showCancelled(prompt);
    return {PromptStatus::Cancel, {}};
  }
  std::deque<std::wstring>* given = !queued_.empty()  ? &queued_
                                    : !typed_.empty() ? &typed_
                                                      : nullptr;
  if (given != nullptr) {
    // An answer given beforehand, shown as if typed.
    line = given->front();
    given->pop_front();
    const std::wstring_view echo =
        answers == Console::Answers::Word ? splitFirstWord(*line).word : std::wstring_view(*line);
    console_.print(prompt + std::wstring(echo) + L"\n");
    // "_" marks an option in the language every host understands, as a module
    // types it; ours has only that language, so the mark goes.
    if (given == &typed_ && line->size() > 1 && (*line)[0] == L'_') line->erase(0, 1);
  } else {
    line = console_.readAnswer(prompt, completions, answers);
  }
  if (!line) {
    // A script that stops in the middle of a command reads as a cancel of it.
    inputEnded_ = true;
    ++cancels_;
    console_.showCancelled(prompt);
    return {PromptStatus::Cancel, {}};
  }
  if (isCancelAnswer(*line)) {
    ++cancels_;
    return {PromptStatus::Cancel, {}};
  }
  // A blank line is Enter, as the space bar is at the host's prompts.
  if (trimBlanks(*line).empty()) return {PromptStatus::None, {}};
  return {PromptStatus::Normal, std::move(*line)};
}

void Prompter::typeAhead(const std::wstring& text) {
  // A blank ends an answer as a line feed does, as at the host's command line.
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = text.find_first_of(L" \n", start);
    typed_.push_back(text.substr(start, end == std::wstring::npos ? end : end - start));
    start = end == std::wstring::npos ? text.size() : end + 1;
  }
}

std::optional<platform::StringReply> Prompter::getCommand(const std::wstring& prompt,
                                                          const Keywords& commandNames) {
  // A cancel posted while no command runs has nothing to end.
  cancelPosted_ = false;
  std::optional<std::wstring> line;
  if (!typed_.empty()) {
    line = typed_.front();
    typed_.pop_front();
    console_.print(prompt + *line + L"\n");
  } else {
    line = console_.readAnswer(prompt, commandNames);
  }
  if (!line) {
    inputEnded_ = true;
    return std::nullopt;
  }
  if (isCancelAnswer(*line)) return platform::StringReply{PromptStatus::Cancel, {}};
  const std::wstring_view name = trimBlanks(*line);
  if (name.empty()) return platform::StringReply{PromptStatus::None, {}};
  return platform::StringReply{PromptStatus::Normal, std::wstring(name)};
}

platform::StringReply Prompter::getString(const std::wstring& prompt, bool allowSpaces) {
  platform::StringReply reply =
      ask(prompt, {}, allowSpaces ? Console::Answers::Line : Console::Answers::Word);
  if (reply.status == PromptStatus::None) return {PromptStatus::Normal, {}};
  if (reply.status == PromptStatus::Normal && !allowSpaces) {
    // A blank ends a name, as the space bar does at the host's prompts; what
    // follows is said to be ignored rather than lost without a word.
    const FirstWord split = splitFirstWord(reply.text);
    if (!split.rest.empty()) console_.print(L"Ignored: " + std::wstring(split.rest) + L"\n");
    reply.text = std::wstring(split.word);
  }
  return reply;
}

void Prompter::complainAboutKeyword(const std::wstring& answer, const Keywords& keywords,
                                    const std::vector<int>& candidates) {
  if (candidates.size() < 2) {
    console_.print(L"Invalid option keyword.\n");
    return;
  }
  std::wstring text = L"Ambiguous keyword '" + std::wstring(trimBlanks(answer)) + L"': could be ";
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (i > 0) text += i + 1 == candidates.size() ? L" or " : L", ";
    text += keywords[static_cast<std::size_t>(candidates[i])];
  }
  console_.print(text + L".\n");
}

platform::StringReply Prompter::getKeyword(const std::wstring& prompt, const Keywords& keywords,
                                           const std::optional<std::wstring>& defaultKeyword) {
  return askKeyword(prompt, keywords, defaultKeyword, nullptr);
}

platform::StringReply Prompter::getKeyword(const std::wstring& prompt, const Keywords& keywords,
                                           std::wstring& rest) {
  return askKeyword(prompt, keywords, std::nullopt, &rest);
}

platform::StringReply Prompter::askKeyword(const std::wstring& prompt, const Keywords& keywords,
                                           const std::optional<std::wstring>& defaultKeyword,
                                           std::wstring* rest) {
  if (rest != nullptr) rest->clear();
  for (;;) {
    platform::StringReply reply = ask(prompt, keywords);
    if (reply.status == PromptStatus::Cancel) return reply;
    if (reply.status == PromptStatus::None) {
      if (defaultKeyword) return {PromptStatus::Normal, *defaultKeyword};
      return reply;
    }
    std::wstring_view answer = reply.text;
    if (rest != nullptr) {
      const FirstWord split = splitFirstWord(answer);
      answer = split.word;
      *rest = std::wstring(split.rest);
    }
    const KeywordMatch match = matchKeyword(answer, keywords);
    if (match.found()) {
      return {PromptStatus::Normal, keywords[static_cast<std::size_t>(match.index)]};
    }
    complainAboutKeyword(std::wstring(answer), keywords, match.candidates);
  }
}

Answer<bool> Prompter::getYesNo(const std::wstring& prompt, std::optional<bool> defaultValue) {
  std::optional<std::wstring> defaultKeyword;
  if (defaultValue) defaultKeyword = *defaultValue ? L"Yes" : L"No";
  const platform::StringReply reply = getKeyword(prompt, {L"Yes", L"No"}, defaultKeyword);
  Answer<bool> answer;
  answer.status = reply.status;
  answer.value = reply.status == PromptStatus::Normal && reply.text == L"Yes";
  return answer;
}

template <typename T, typename Parse>
Answer<T> Prompter::getValue(const std::wstring& prompt, const Keywords& keywords,
                             std::optional<T> defaultValue, Parse parse, const wchar_t* complaint) {
  for (;;) {
    const platform::StringReply reply = ask(prompt, keywords);
    Answer<T> answer;
    answer.status = reply.status;
    if (reply.status == PromptStatus::Cancel) return answer;
    if (reply.status == PromptStatus::None) {
      if (defaultValue) {
        answer.status = PromptStatus::Normal;
        answer.value = *defaultValue;
      }
      return answer;
    }
    if (const auto value = parse(reply.text)) {
      answer.value = *value;
      return answer;
    }
    if (keywords.empty()) {
      console_.print(std::wstring(complaint) + L".\n");
      continue;
    }
    const KeywordMatch match = matchKeyword(reply.text, keywords);
    if (match.found()) {
      answer.status = PromptStatus::Keyword;
      answer.keyword = keywords[static_cast<std::size_t>(match.index)];
      return answer;
    }
    if (match.ambiguous()) {
      complainAboutKeyword(reply.text, keywords, match.candidates);
    } else {
      console_.print(std::wstring(complaint) + L" or option keyword.\n");
    }
  }
}

Answer<platform::Point3d> Prompter::getPoint(const std::wstring& prompt, const Keywords& keywords) {
  return getValue<platform::Point3d>(prompt, keywords, std::nullopt, parsePoint, L"Invalid point");
}

Answer<double> Prompter::getReal(const std::wstring& prompt, std::optional<double> defaultValue,
                                 const Keywords& keywords) {
  return getValue<double>(prompt, keywords, defaultValue, parseReal, L"Requires a real value");
}

Answer<int> Prompter::getInt(const std::wstring& prompt, std::optional<int> defaultValue,
                             const Keywords& keywords) {
  return getValue<int>(prompt, keywords, defaultValue, parseInt, L"Requires an integer value");
}

Answer<std::vector<SelectionItem>> Prompter::getSelection(const std::wstring& prompt) {
  for (;;) {
    platform::StringReply reply = ask(prompt);
    Answer<std::vector<SelectionItem>> answer;
    answer.status = reply.status;
    if (reply.status != PromptStatus::Normal) return answer;
    SelectionParse parse = parseSelection(reply.text);
    if (parse.ok()) {
      answer.value = std::move(parse.items);
      return answer;
    }
    console_.print(parse.error + L"\n");
  }
}

}  // namespace host

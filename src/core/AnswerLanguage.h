// The language that answers are asked for in.
#pragma once

#include <QString>

#include <optional>

namespace Vesk
{

/** Stored by its lower-case name; an unknown stored value reads as Auto. */
enum class AnswerLanguage { Auto, Korean, English, Japanese, Chinese };

[[nodiscard]] AnswerLanguage answerLanguageFromStored(const QString &value);
[[nodiscard]] QString storedValue(AnswerLanguage language);

/** What a child is told about the language of its answers; absent for Auto. */
[[nodiscard]] std::optional<QString> systemPromptInstruction(AnswerLanguage language);

} // namespace Vesk

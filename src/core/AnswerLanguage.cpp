#include "core/AnswerLanguage.h"

#include <array>
#include <utility>

namespace Vesk
{

namespace
{

constexpr std::array<std::pair<AnswerLanguage, QLatin1StringView>, 5> storedValues {{
    {AnswerLanguage::Auto, QLatin1StringView("auto")},
    {AnswerLanguage::Korean, QLatin1StringView("korean")},
    {AnswerLanguage::English, QLatin1StringView("english")},
    {AnswerLanguage::Japanese, QLatin1StringView("japanese")},
    {AnswerLanguage::Chinese, QLatin1StringView("chinese")},
}};

QString nameForInstruction(AnswerLanguage language)
{
    switch (language) {
    case AnswerLanguage::Auto:
        break;
    case AnswerLanguage::Korean:
        return QStringLiteral("Korean (한국어)");
    case AnswerLanguage::English:
        return QStringLiteral("English");
    case AnswerLanguage::Japanese:
        return QStringLiteral("Japanese (日本語)");
    case AnswerLanguage::Chinese:
        return QStringLiteral("Chinese (中文)");
    }
    return {};
}

} // namespace

AnswerLanguage answerLanguageFromStored(const QString &value)
{
    for (const auto &[language, stored] : storedValues) {
        if (value == stored)
            return language;
    }
    return AnswerLanguage::Auto;
}

QString storedValue(AnswerLanguage language)
{
    for (const auto &[candidate, stored] : storedValues) {
        if (candidate == language)
            return stored;
    }
    return {};
}

std::optional<QString> systemPromptInstruction(AnswerLanguage language)
{
    const QString name = nameForInstruction(language);
    if (name.isEmpty())
        return std::nullopt;
    return QStringLiteral(
               "Always write every response and summary in %1, regardless of the language of the task, "
               "code, files, or tool output you are working with.")
        .arg(name);
}

} // namespace Vesk

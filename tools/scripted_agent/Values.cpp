#include "Values.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

namespace
{

QJsonValue filledInText(const QString &text, const Names &names)
{
    QString out;
    qsizetype from = 0;
    while (true) {
        const qsizetype begin = text.indexOf("${"_L1, from);
        const qsizetype end = begin < 0 ? -1 : text.indexOf(u'}', begin);
        if (end < 0)
            break;
        const auto named = names.constFind(text.mid(begin + 2, end - begin - 2));
        if (named != names.cend() && begin == 0 && end == text.size() - 1)
            return *named;
        out += QStringView(text).mid(from, begin - from);
        out += named == names.cend() ? text.mid(begin, end + 1 - begin) : asText(*named);
        from = end + 1;
    }
    out += QStringView(text).mid(from);
    return out;
}

bool textMatches(const QString &text, const QString &pattern)
{
    if (pattern.size() > 2 && pattern.startsWith(u'*') && pattern.endsWith(u'*'))
        return text.contains(QStringView(pattern).mid(1, pattern.size() - 2));
    return text == pattern;
}

} // namespace

QJsonValue filledIn(const QJsonValue &value, const Names &names)
{
    if (value.isString())
        return filledInText(value.toString(), names);
    if (value.isArray()) {
        QJsonArray out;
        for (const auto item : value.toArray())
            out.append(filledIn(item, names));
        return out;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        QJsonObject out;
        for (auto it = object.begin(); it != object.end(); ++it)
            out.insert(it.key(), filledIn(it.value(), names));
        return out;
    }
    return value;
}

bool matches(const QJsonValue &value, const QJsonValue &pattern)
{
    if (pattern == QJsonValue(u"*"_s))
        return !value.isUndefined();
    if (pattern.isObject()) {
        const QJsonObject wanted = pattern.toObject();
        const QJsonObject object = value.toObject();
        const QStringList keys = wanted.keys();
        return value.isObject() && std::all_of(keys.begin(), keys.end(), [&](const QString &key) {
                   return matches(object.value(key), wanted.value(key));
               });
    }
    if (pattern.isArray()) {
        const QJsonArray wanted = pattern.toArray();
        const QJsonArray array = value.toArray();
        return value.isArray()
            && std::equal(array.begin(), array.end(), wanted.begin(), wanted.end(), matches);
    }
    if (pattern.isString() && value.isString())
        return textMatches(value.toString(), pattern.toString());
    return value == pattern;
}

QJsonValue valueAt(const QJsonValue &root, const QString &path)
{
    QJsonValue value = root;
    for (const QString &key : path.split(u'.', Qt::SkipEmptyParts))
        value = value.isArray() ? value.toArray().at(key.toLongLong()) : value.toObject().value(key);
    return value;
}

QString asText(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    // The writer takes whole documents only: a list of one, without its brackets.
    const QByteArray list = QJsonDocument(QJsonArray {value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

} // namespace ScriptedAgent

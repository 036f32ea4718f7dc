#include "ui/chat/ComposerCompletion.h"

#include "core/UsageRecorder.h"
#include "sessions/ProjectChat.h"

#include <QGuiApplication>
#include <QInputMethod>

namespace Vesk
{

using ComposerAutocomplete::Trigger;

ComposerCompletion::ComposerCompletion(QObject *parent)
    : QObject(parent)
{
    connect(&m_model, &ComposerAutocompleteModel::isActiveChanged, this, &ComposerCompletion::isOpenChanged);
    connect(&m_model, &ComposerAutocompleteModel::highlightedChanged, this,
            &ComposerCompletion::highlightedChanged);
    connect(&m_model, &ComposerAutocompleteModel::candidatesChanged, this,
            &ComposerCompletion::candidatesChanged);
    connect(&m_lookup, &ComposerFileLookup::found, this, &ComposerCompletion::onFound);
}

void ComposerCompletion::setChat(ProjectChat *chat)
{
    m_chat = chat;
    close();
}

void ComposerCompletion::noteTyped(const QString &text, int caret, const QString &preedit)
{
    follow(text, caret, preedit);
}

void ComposerCompletion::noteCaret(const QString &text, int caret, const QString &preedit)
{
    if (m_detection)
        follow(text, caret, preedit);
}

void ComposerCompletion::follow(const QString &text, qsizetype caret, const QString &preedit)
{
    const auto before = std::exchange(m_detection, std::nullopt);
    if (m_chat && caret >= 0 && caret <= text.size()) {
        m_detection = preedit.isEmpty()
            ? ComposerAutocomplete::detect(text, caret)
            : ComposerAutocomplete::detect(text.first(caret) + preedit, caret + preedit.size());
    }
    if (!m_detection) {
        close();
        return;
    }
    m_blankFollows = caret < text.size() && text.at(caret) == u' ';
    if (m_refused == m_detection->range.start)
        return;
    m_refused.reset();
    if (m_detection == before)
        return;
    if (!before || before->trigger != m_detection->trigger)
        m_model.dismiss();
    m_model.setPendingConfirm(false);
    if (m_detection->trigger == Trigger::At) {
        m_lookup.find(m_detection->query, m_chat->cwd());
    } else {
        m_lookup.cancel();
        m_model.update(m_detection,
                       ComposerAutocomplete::filterSlash(m_detection->query, m_chat->slashCommands()));
    }
}

void ComposerCompletion::onFound(const QStringList &paths)
{
    const bool wasAskedFor = m_model.pendingConfirm();
    m_model.update(m_detection, paths);
    if (wasAskedFor && m_model.isActive())
        confirm();
}

void ComposerCompletion::confirm()
{
    if (m_lookup.isRunning()) {
        m_model.setPendingConfirm(m_model.isActive());
        return;
    }
    // A syllable in the making ends first: it is a part of what is replaced.
    QGuiApplication::inputMethod()->commit();
    const auto chosen = m_model.selected();
    if (!chosen || !m_detection)
        return;
    const auto range = m_detection->range;
    const QString text = (m_detection->trigger == Trigger::At ? u'@' : u'/') + *chosen + u' ';
    const auto end = range.start + range.length + (m_blankFollows ? 1 : 0);
    close();
    UsageRecorder::record(FeatureSignal::ComposerAutocompleteUsed);
    Q_EMIT replaceRequested(static_cast<int>(range.start), static_cast<int>(end), text);
}

void ComposerCompletion::take(int index)
{
    m_model.highlight(index);
    confirm();
}

void ComposerCompletion::refuse()
{
    if (m_detection)
        m_refused = m_detection->range.start;
    m_lookup.cancel();
    m_model.dismiss();
}

void ComposerCompletion::close()
{
    m_detection.reset();
    m_refused.reset();
    m_lookup.cancel();
    m_model.dismiss();
}

} // namespace Vesk

// What the permission card shows and does.
#pragma once

#include "claude/PromptRequests.h"
#include "ui/chat/PromptGuard.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <QVariantList>

#include <optional>

namespace Vesk
{

class ProjectChat;

/** One line of a request's details: an argument and its value; the key is empty for text without one. */
struct PermissionDetailLine {
    QString key;
    QString value;
    bool operator==(const PermissionDetailLine &) const = default;
};

/** Cuts a request's `detail` at the arguments that its input really has. A line inside a value that only
   looks like an argument stays with its value, and no text is ever left out. */
[[nodiscard]] QList<PermissionDetailLine> permissionDetailLines(const PermissionRequest &request);

/** The open permission request of a session; blank while there is none. */
class PermissionCard : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString accessibleTitle READ accessibleTitle NOTIFY changed)
    Q_PROPERTY(QString remoteText READ remoteText NOTIFY changed)
    Q_PROPERTY(QVariantList details READ details NOTIFY changed)
    Q_PROPERTY(bool canAlways READ canAlways NOTIFY changed)
    Q_PROPERTY(QStringList rules READ rules NOTIFY changed)
    Q_PROPERTY(QString ruleFile READ ruleFile CONSTANT)
    Q_PROPERTY(QDateTime since READ since NOTIFY changed)

public:
    explicit PermissionCard(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] bool isOpen() const { return m_request.has_value(); }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString accessibleTitle() const;
    [[nodiscard]] QString remoteText() const; ///< empty for a turn that was started here
    [[nodiscard]] QVariantList details() const;
    [[nodiscard]] bool canAlways() const { return m_request && m_request->rawSuggestionsJSON; }
    [[nodiscard]] QStringList rules() const { return m_request ? m_request->ruleTexts : QStringList(); }
    [[nodiscard]] QString ruleFile() const { return QStringLiteral(".claude/settings.local.json"); }
    [[nodiscard]] QDateTime since() const;

    Q_INVOKABLE void allowOnce();
    Q_INVOKABLE void allowAlways(); ///< nothing without suggestions
    Q_INVOKABLE void deny();

Q_SIGNALS:
    void changed();

private:
    void update();
    void answer(PermissionChoice choice);

    QPointer<ProjectChat> m_chat;
    std::optional<PermissionRequest> m_request;
    PromptGuard m_guard;
};

} // namespace Vesk

// The questions of an agent and the answers that a person is putting together.
#pragma once

#include "claude/PromptRequests.h"
#include "ui/chat/PromptGuard.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace Vesk
{

class ProjectChat;

/** The options of one question. */
class QuestionOptions : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a question form")

public:
    enum Roles {
        LabelRole = Qt::UserRole + 1,
        DescriptionRole, ///< empty without one
        DigitRole,       ///< the key that chooses it, "" beyond nine
        ChosenRole,
    };

    /** `firstDigit` is the number of the first option, counted from 1 through all questions. */
    QuestionOptions(const QuestionRequest::Question &question, int firstDigit, QObject *parent = nullptr);

    [[nodiscard]] bool isMulti() const { return m_question.multiSelect; }
    [[nodiscard]] const QuestionRequest::Question &question() const { return m_question; }
    [[nodiscard]] bool anyChosen() const;
    [[nodiscard]] QStringList chosenLabels() const;
    /** Chooses an option, or takes it back where several can be chosen. */
    void choose(int index);
    void clear();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void setChosen(int index, bool chosen);

    QuestionRequest::Question m_question;
    int m_firstDigit;
    QList<bool> m_chosen;
};

/** The open questions of a session, one row for each; no rows while there are none. */
class QuestionForm : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY requestChanged)
    Q_PROPERTY(QString title READ title NOTIFY requestChanged)
    Q_PROPERTY(QString remoteText READ remoteText NOTIFY requestChanged)
    Q_PROPERTY(QDateTime since READ since NOTIFY requestChanged)
    Q_PROPERTY(bool allAnswered READ allAnswered NOTIFY answersChanged)
    Q_PROPERTY(int answeredCount READ answeredCount NOTIFY answersChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY answersChanged)

public:
    enum Roles {
        HeaderRole = Qt::UserRole + 1,
        QuestionRole,
        MultiRole,
        OptionsRole,     ///< QuestionOptions
        OtherRole,       ///< the free text
        OtherChosenRole, ///< the free text counts
    };

    explicit QuestionForm(QObject *parent = nullptr);
    ~QuestionForm() override;

    void setChat(ProjectChat *chat);

    [[nodiscard]] bool isOpen() const { return m_request.has_value(); }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString remoteText() const;
    [[nodiscard]] QDateTime since() const;
    [[nodiscard]] bool allAnswered() const;
    [[nodiscard]] int answeredCount() const;
    [[nodiscard]] QString progressText() const; ///< "2개 중 1개 답함"

    Q_INVOKABLE void choose(int question, int option);
    /** Makes the free text count or not; where one answer is possible it takes the place of an option. */
    Q_INVOKABLE void chooseOther(int question, bool chosen);
    /** Writes the free text; text that is not blank counts at once. */
    Q_INVOKABLE void setOther(int question, const QString &text);
    /** Chooses by number, counted from 1 through the options of all questions. False for a number without
     * one. */
    Q_INVOKABLE bool chooseDigit(int digit);
    /** Sends the answers; nothing happens before all questions have one. */
    Q_INVOKABLE void sendAnswers();
    /** Goes on without answers. */
    Q_INVOKABLE void skip();

    [[nodiscard]] QList<QuestionAnswer> answers() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void requestChanged();
    void answersChanged();

private:
    struct Entry {
        std::unique_ptr<QuestionOptions> options;
        QString other;
        bool otherChosen = false;

        [[nodiscard]] bool otherCounts() const { return otherChosen && !other.trimmed().isEmpty(); }
        [[nodiscard]] bool answered() const { return options->anyChosen() || otherCounts(); }
    };

    void update();
    [[nodiscard]] Entry *entry(int question);
    void noteAnswer(int question);

    QPointer<ProjectChat> m_chat;
    std::optional<QuestionRequest> m_request;
    std::vector<Entry> m_entries;
    PromptGuard m_guard;
};

} // namespace Vesk

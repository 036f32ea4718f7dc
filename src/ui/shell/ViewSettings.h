// How the window looks and what it remembers of that.
#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class KeepAwakeController;
class Preferences;

/** The choices of the settings and the window's measures, kept in the preferences and handed to Theme. */
class ViewSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY changed)
    Q_PROPERTY(int textSize READ textSize WRITE setTextSize NOTIFY changed)
    Q_PROPERTY(bool keepAwake READ keepAwake WRITE setKeepAwake NOTIFY changed)
    Q_PROPERTY(QString answerLanguage READ answerLanguage WRITE setAnswerLanguage NOTIFY changed)
    Q_PROPERTY(bool noticeMyTurn READ noticeMyTurn WRITE setNoticeMyTurn NOTIFY changed)
    Q_PROPERTY(bool noticeFinished READ noticeFinished WRITE setNoticeFinished NOTIFY changed)
    Q_PROPERTY(double sidebarWidth READ sidebarWidth WRITE setSidebarWidth NOTIFY changed)
    Q_PROPERTY(double backgroundWidth READ backgroundWidth WRITE setBackgroundWidth NOTIFY changed)

public:
    ViewSettings(Preferences &preferences, KeepAwakeController &keepAwake, QObject *parent = nullptr);

    /** "system", "light" or "dark". */
    [[nodiscard]] QString theme() const;
    void setTheme(const QString &theme);
    /** Per cent. */
    [[nodiscard]] int textSize() const;
    void setTextSize(int percent);
    Q_INVOKABLE void enlargeText();
    Q_INVOKABLE void shrinkText();
    Q_INVOKABLE void resetText();
    [[nodiscard]] bool keepAwake() const;
    void setKeepAwake(bool keepAwake);
    /** As stored: "auto", "korean", "english", "japanese", "chinese". */
    [[nodiscard]] QString answerLanguage() const;
    void setAnswerLanguage(const QString &language);
    /** Whether the desktop is told while the window is not active. */
    [[nodiscard]] bool noticeMyTurn() const;
    void setNoticeMyTurn(bool told);
    [[nodiscard]] bool noticeFinished() const;
    void setNoticeFinished(bool told);
    [[nodiscard]] double sidebarWidth() const;
    void setSidebarWidth(double width);
    [[nodiscard]] double backgroundWidth() const;
    void setBackgroundWidth(double width);

    /** Where the window shall open: as it was, if enough of it is on a screen of today; else centred. */
    [[nodiscard]] Q_INVOKABLE QRect windowGeometry() const;
    Q_INVOKABLE void keepWindowGeometry(int x, int y, int width, int height);

Q_SIGNALS:
    void changed();

private:
    void applyToTheme();

    Preferences &m_preferences;
    KeepAwakeController &m_keepAwake;
};

/** A remembered place, or the default, made to fit: at least the least size, and reachable on a screen. */
[[nodiscard]] QRect fittingGeometry(const std::optional<QRect> &remembered, const QList<QRect> &screens);

} // namespace Vesk

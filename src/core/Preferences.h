// The user's preferences: typed access over one INI file.
#pragma once

#include "core/AnswerLanguage.h"

#include <QObject>
#include <QRect>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <optional>

namespace Vesk
{

/** The names of the preferences that have a typed access here. */
namespace PreferenceKey
{
inline constexpr QLatin1StringView answerLanguage("orvane.answerLanguage");
inline constexpr QLatin1StringView keepAwake("orvane.keepAwake");
inline constexpr QLatin1StringView migratedUserDefaults("vesk.migratedUserDefaultsFromOrvane");
inline constexpr QLatin1StringView windowTextSize("vesk.window.textSize");
inline constexpr QLatin1StringView windowTheme("vesk.window.theme");
inline constexpr QLatin1StringView windowGeometry("vesk.window.geometry");
inline constexpr QLatin1StringView windowSidebarWidth("vesk.window.sidebarWidth");
inline constexpr QLatin1StringView windowPanes("vesk.window.panes");
inline constexpr QLatin1StringView windowBackgroundWidth("vesk.window.backgroundWidth");
inline constexpr QLatin1StringView noticeMyTurn("vesk.notices.myTurn");
inline constexpr QLatin1StringView noticeFinished("vesk.notices.finished");
inline constexpr QLatin1StringView settingsPane("settingsSelectedPane");
} // namespace PreferenceKey

enum class ThemeChoice { System, Light, Dark };

/**
 * Main thread only. A value of the wrong type reads as its default.
 *
 * A file that is not well-formed INI yields what can be read of it; a copy is put aside as `<file>.broken`
 * before it is first written. A file that cannot be opened is left alone: changes then last for this run.
 */
class Preferences : public QObject
{
    Q_OBJECT

public:
    static constexpr int minimumTextSize = 80;
    static constexpr int maximumTextSize = 160;
    static constexpr int defaultTextSize = 100;
    static constexpr double minimumSidebarWidth = 200;
    static constexpr double maximumSidebarWidth = 400;
    static constexpr double defaultSidebarWidth = 256;
    static constexpr double minimumBackgroundWidth = 280;
    static constexpr double maximumBackgroundWidth = 800;
    static constexpr double defaultBackgroundWidth = 404;

    explicit Preferences(const QString &path, QObject *parent = nullptr);

    [[nodiscard]] bool contains(const QString &key) const;
    [[nodiscard]] QVariant value(const QString &key) const;
    [[nodiscard]] bool boolValue(const QString &key, bool fallback = false) const;
    [[nodiscard]] double doubleValue(const QString &key, double fallback = 0) const;
    [[nodiscard]] QString stringValue(const QString &key, const QString &fallback = {}) const;
    /** Sets a value; an invalid variant removes the key. Emits changed() only when the value becomes another.
     */
    void setValue(const QString &key, const QVariant &value);

    [[nodiscard]] AnswerLanguage answerLanguage() const;
    void setAnswerLanguage(AnswerLanguage language);
    [[nodiscard]] bool keepAwake() const;
    void setKeepAwake(bool keepAwake);

    /** Whether the desktop is told of a session that waits for the person, and of one that has ended. */
    [[nodiscard]] bool noticeMyTurn() const;
    void setNoticeMyTurn(bool told);
    [[nodiscard]] bool noticeFinished() const;
    void setNoticeFinished(bool told);

    /** Per cent, between the limits above. */
    [[nodiscard]] int textSize() const;
    void setTextSize(int percent);
    [[nodiscard]] ThemeChoice theme() const;
    void setTheme(ThemeChoice theme);
    /** Where the window was; absent before the first time. */
    [[nodiscard]] std::optional<QRect> windowGeometry() const;
    void setWindowGeometry(const QRect &geometry);
    /** Pixels, between the limits above. */
    [[nodiscard]] double sidebarWidth() const;
    void setSidebarWidth(double width);
    /** The same for the background panel. */
    [[nodiscard]] double backgroundWidth() const;
    void setBackgroundWidth(double width);

    /** The section of the settings that was last open: "general" before the first time. */
    [[nodiscard]] QString settingsPane() const;
    void setSettingsPane(const QString &id);

    /** Where they are kept. */
    [[nodiscard]] QString path() const { return m_settings.fileName(); }
    /** Writes what is not written yet; else this happens when the event loop is next reached. */
    void sync();

    /** Why the file is not what it should be, for the log; empty when it is. */
    [[nodiscard]] const QString &fileProblem() const { return m_fileProblem; }

Q_SIGNALS:
    void changed(const QString &key);

private:
    QSettings m_settings;
    QString m_fileProblem;
};

} // namespace Vesk

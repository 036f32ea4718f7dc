// Whether the desktop wants dark or light windows, and when that changes.
#pragma once

#include <QObject>

class QDBusVariant;

namespace Vesk
{

/** The desktop's choice: the portal's setting where there is one, else the lightness of the system's palette.
 */
class SystemColorScheme : public QObject
{
    Q_OBJECT

public:
    /** Reads the palette at once; the portal's answer comes later, as a change. */
    explicit SystemColorScheme(QObject *parent = nullptr);

    [[nodiscard]] bool dark() const;

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    enum class Preference { None, Dark, Light };

    void askPortal();
    void notePreference(const QVariant &value);

    Preference m_preference = Preference::None;
};

} // namespace Vesk

#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace brivane {

class Clock;
class Composition;
class UserDefaults;

/// The one store of the user's preferences. Main thread only.
///
/// Every field is a property; its key in the user defaults is its name. A write is published at
/// once, and saved soon after (see UserDefaults), also when the value is the same. A field that was
/// never written has no key. Values are not clamped: limits belong to the controls on the screens.
class AppSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    Q_PROPERTY(qint64 quarantinePurgeDays READ quarantinePurgeDays WRITE setQuarantinePurgeDays
                   NOTIFY quarantinePurgeDaysChanged)
    Q_PROPERTY(quint16 cleanModeKeyCode READ cleanModeKeyCode WRITE setCleanModeKeyCode NOTIFY
                   cleanModeKeyCodeChanged)
    Q_PROPERTY(QString cleanModeKeyName READ cleanModeKeyName WRITE setCleanModeKeyName NOTIFY
                   cleanModeKeyNameChanged)
    Q_PROPERTY(double cleanModeHoldDuration READ cleanModeHoldDuration WRITE
                   setCleanModeHoldDuration NOTIFY cleanModeHoldDurationChanged)
    Q_PROPERTY(qint64 cleaningReminderDays READ cleaningReminderDays WRITE setCleaningReminderDays
                   NOTIFY cleaningReminderDaysChanged)
    Q_PROPERTY(QDateTime lastPhysicalCleanDate READ lastPhysicalCleanDate WRITE
                   setLastPhysicalCleanDate NOTIFY lastPhysicalCleanDateChanged)
    Q_PROPERTY(bool useBinaryUnits READ useBinaryUnits WRITE setUseBinaryUnits NOTIFY
                   useBinaryUnitsChanged)
    Q_PROPERTY(bool showHiddenFiles READ showHiddenFiles WRITE setShowHiddenFiles NOTIFY
                   showHiddenFilesChanged)
    Q_PROPERTY(
        bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(qint64 oldFileAgeDays READ oldFileAgeDays WRITE setOldFileAgeDays NOTIFY
                   oldFileAgeDaysChanged)
    Q_PROPERTY(bool showMenuBarWidget READ showMenuBarWidget WRITE setShowMenuBarWidget NOTIFY
                   showMenuBarWidgetChanged)
    Q_PROPERTY(qint64 lowDiskThresholdPercent READ lowDiskThresholdPercent WRITE
                   setLowDiskThresholdPercent NOTIFY lowDiskThresholdPercentChanged)
    Q_PROPERTY(QStringList excludedPaths READ excludedPaths WRITE setExcludedPaths NOTIFY
                   excludedPathsChanged)
    /// Undefined when no cleaning was ever recorded.
    Q_PROPERTY(QVariant daysSinceLastCleaning READ daysSinceLastCleaningVariant NOTIFY
                   daysSinceLastCleaningChanged STORED false)
    Q_PROPERTY(
        bool isCleaningOverdue READ isCleaningOverdue NOTIFY isCleaningOverdueChanged STORED false)

public:
    /// Loads all fields, for which it may wait for the disk. What is absent or of another type has
    /// its default; nothing is written. `home` is what "~" stands for in an excluded path.
    AppSettings(UserDefaults& defaults, Clock& clock, QString home, QObject* parent = nullptr);

    static std::unique_ptr<AppSettings> make(Composition& composition);

    /// Days that a quarantined item is kept.
    [[nodiscard]] qint64 quarantinePurgeDays() const { return m_quarantinePurgeDays; }
    /// Virtual key code of the key that ends a cleaning session.
    [[nodiscard]] quint16 cleanModeKeyCode() const { return m_cleanModeKeyCode; }
    [[nodiscard]] const QString& cleanModeKeyName() const { return m_cleanModeKeyName; }
    /// Seconds that the key has to be held.
    [[nodiscard]] double cleanModeHoldDuration() const { return m_cleanModeHoldDuration; }
    /// Days between physical cleanings; below 1 for no reminder.
    [[nodiscard]] qint64 cleaningReminderDays() const { return m_cleaningReminderDays; }
    /// Invalid when no physical cleaning was ever recorded.
    [[nodiscard]] const QDateTime& lastPhysicalCleanDate() const { return m_lastPhysicalCleanDate; }
    /// Stored and shown only, as the next two.
    [[nodiscard]] bool useBinaryUnits() const { return m_useBinaryUnits; }
    [[nodiscard]] bool showHiddenFiles() const { return m_showHiddenFiles; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }
    /// Days after which a download counts as old.
    [[nodiscard]] qint64 oldFileAgeDays() const { return m_oldFileAgeDays; }
    [[nodiscard]] bool showMenuBarWidget() const { return m_showMenuBarWidget; }
    /// Free space below this share of the disk is low.
    [[nodiscard]] qint64 lowDiskThresholdPercent() const { return m_lowDiskThresholdPercent; }
    /// Sorted, standardised.
    [[nodiscard]] const QStringList& excludedPaths() const { return m_excludedPaths; }

    void setQuarantinePurgeDays(qint64 value);
    void setCleanModeKeyCode(quint16 value);
    void setCleanModeKeyName(const QString& value);
    void setCleanModeHoldDuration(double value);
    void setCleaningReminderDays(qint64 value);
    void setLastPhysicalCleanDate(const QDateTime& value);
    void setUseBinaryUnits(bool value);
    void setShowHiddenFiles(bool value);
    void setLaunchAtLogin(bool value);
    void setOldFileAgeDays(qint64 value);
    void setShowMenuBarWidget(bool value);
    void setLowDiskThresholdPercent(qint64 value);
    void setExcludedPaths(const QStringList& value);

    /// Whole days since the last physical cleaning, toward zero; none when there was none.
    [[nodiscard]] std::optional<qint64> daysSinceLastCleaning() const;
    /// Whether a reminder is wanted and as many days have passed, or no cleaning was ever recorded.
    [[nodiscard]] bool isCleaningOverdue() const;
    /// Time has passed, maybe days: tells of a change of the two above.
    void noteTime();

    /// Adds `path`, standardised, unless it is there or empty.
    Q_INVOKABLE void addExcludedPath(const QString& path);
    /// Removes every entry that is exactly `path`.
    Q_INVOKABLE void removeExcludedPath(const QString& path);
    /// Whether `path` is an excluded path or lies below one.
    Q_INVOKABLE [[nodiscard]] bool isExcluded(const QString& path) const;

Q_SIGNALS:
    void quarantinePurgeDaysChanged();
    void cleanModeKeyCodeChanged();
    void cleanModeKeyNameChanged();
    void cleanModeHoldDurationChanged();
    void cleaningReminderDaysChanged();
    void lastPhysicalCleanDateChanged();
    void useBinaryUnitsChanged();
    void showHiddenFilesChanged();
    void launchAtLoginChanged();
    void oldFileAgeDaysChanged();
    void showMenuBarWidgetChanged();
    void lowDiskThresholdPercentChanged();
    void excludedPathsChanged();
    void daysSinceLastCleaningChanged();
    void isCleaningOverdueChanged();

private:
    void load();
    [[nodiscard]] QVariant daysSinceLastCleaningVariant() const;

    UserDefaults& m_defaults;
    Clock& m_clock;
    const QString m_home;

    // Their initial values are the defaults.
    qint64 m_quarantinePurgeDays = 7;
    quint16 m_cleanModeKeyCode = 49;
    QString m_cleanModeKeyName = QStringLiteral("Space");
    double m_cleanModeHoldDuration = 10.0;
    qint64 m_cleaningReminderDays = 0;
    QDateTime m_lastPhysicalCleanDate;
    bool m_useBinaryUnits = true;
    bool m_showHiddenFiles = false;
    bool m_launchAtLogin = false;
    qint64 m_oldFileAgeDays = 30;
    bool m_showMenuBarWidget = true;
    qint64 m_lowDiskThresholdPercent = 10;
    QStringList m_excludedPaths;

    // As they were told of last.
    std::optional<qint64> m_knownDays;
    bool m_isKnownOverdue = false;
};

} // namespace brivane

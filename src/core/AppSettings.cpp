#include "core/AppSettings.h"

#include "core/Composition.h"
#include "core/Publish.h"
#include "platform/Clock.h"
#include "platform/Host.h"
#include "platform/LiesIn.h"
#include "platform/StandardizedPath.h"
#include "platform/UserDefaults.h"

#include <cmath>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

AppSettings::AppSettings(UserDefaults& defaults, Clock& clock, QString home, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_clock(clock)
    , m_home(std::move(home))
{
    load();
    noteTime();
}

std::unique_ptr<AppSettings> AppSettings::make(Composition& composition)
{
    const Host& host = composition.host();
    return std::make_unique<AppSettings>(host.defaults, host.clock, host.locations.home());
}

void AppSettings::load()
{
    m_quarantinePurgeDays =
        m_defaults.integer(u"quarantinePurgeDays"_s).value_or(m_quarantinePurgeDays);
    const std::optional<qint64> keyCode = m_defaults.integer(u"cleanModeKeyCode"_s);
    if (keyCode && *keyCode >= 0 && *keyCode <= std::numeric_limits<quint16>::max())
        m_cleanModeKeyCode = static_cast<quint16>(*keyCode);
    m_cleanModeKeyName = m_defaults.string(u"cleanModeKeyName"_s).value_or(m_cleanModeKeyName);
    m_cleanModeHoldDuration =
        m_defaults.real(u"cleanModeHoldDuration"_s).value_or(m_cleanModeHoldDuration);
    m_cleaningReminderDays =
        m_defaults.integer(u"cleaningReminderDays"_s).value_or(m_cleaningReminderDays);
    m_useBinaryUnits = m_defaults.boolean(u"useBinaryUnits"_s).value_or(m_useBinaryUnits);
    m_showHiddenFiles = m_defaults.boolean(u"showHiddenFiles"_s).value_or(m_showHiddenFiles);
    m_launchAtLogin = m_defaults.boolean(u"launchAtLogin"_s).value_or(m_launchAtLogin);
    m_oldFileAgeDays = m_defaults.integer(u"oldFileAgeDays"_s).value_or(m_oldFileAgeDays);
    m_showMenuBarWidget = m_defaults.boolean(u"showMenuBarWidget"_s).value_or(m_showMenuBarWidget);
    m_lowDiskThresholdPercent =
        m_defaults.integer(u"lowDiskThresholdPercent"_s).value_or(m_lowDiskThresholdPercent);
    m_excludedPaths = m_defaults.stringArray(u"excludedPaths"_s).value_or(m_excludedPaths);
    for (QString& path : m_excludedPaths) // whoever wrote it
        path = standardizedPath(path, m_home);
    if (const std::optional<double> seconds = m_defaults.real(u"lastPhysicalCleanDate"_s)) {
        // A number that is no date at all leaves the date empty.
        if (std::abs(*seconds) < 1e12)
            m_lastPhysicalCleanDate =
                QDateTime::fromMSecsSinceEpoch(std::llround(*seconds * 1000), Qt::UTC);
    }
}

void AppSettings::setQuarantinePurgeDays(qint64 value)
{
    publish(m_quarantinePurgeDays, value, this, &AppSettings::quarantinePurgeDaysChanged);
    m_defaults.setInteger(u"quarantinePurgeDays"_s, value);
}

void AppSettings::setCleanModeKeyCode(quint16 value)
{
    publish(m_cleanModeKeyCode, value, this, &AppSettings::cleanModeKeyCodeChanged);
    m_defaults.setInteger(u"cleanModeKeyCode"_s, value);
}

void AppSettings::setCleanModeKeyName(const QString& value)
{
    publish(m_cleanModeKeyName, value, this, &AppSettings::cleanModeKeyNameChanged);
    m_defaults.setString(u"cleanModeKeyName"_s, value);
}

void AppSettings::setCleanModeHoldDuration(double value)
{
    publish(m_cleanModeHoldDuration, value, this, &AppSettings::cleanModeHoldDurationChanged);
    m_defaults.setReal(u"cleanModeHoldDuration"_s, value);
}

void AppSettings::setCleaningReminderDays(qint64 value)
{
    publish(m_cleaningReminderDays, value, this, &AppSettings::cleaningReminderDaysChanged);
    m_defaults.setInteger(u"cleaningReminderDays"_s, value);
    noteTime();
}

void AppSettings::setUseBinaryUnits(bool value)
{
    publish(m_useBinaryUnits, value, this, &AppSettings::useBinaryUnitsChanged);
    m_defaults.setBool(u"useBinaryUnits"_s, value);
}

void AppSettings::setShowHiddenFiles(bool value)
{
    publish(m_showHiddenFiles, value, this, &AppSettings::showHiddenFilesChanged);
    m_defaults.setBool(u"showHiddenFiles"_s, value);
}

void AppSettings::setLaunchAtLogin(bool value)
{
    publish(m_launchAtLogin, value, this, &AppSettings::launchAtLoginChanged);
    m_defaults.setBool(u"launchAtLogin"_s, value);
}

void AppSettings::setOldFileAgeDays(qint64 value)
{
    publish(m_oldFileAgeDays, value, this, &AppSettings::oldFileAgeDaysChanged);
    m_defaults.setInteger(u"oldFileAgeDays"_s, value);
}

void AppSettings::setShowMenuBarWidget(bool value)
{
    publish(m_showMenuBarWidget, value, this, &AppSettings::showMenuBarWidgetChanged);
    m_defaults.setBool(u"showMenuBarWidget"_s, value);
}

void AppSettings::setLowDiskThresholdPercent(qint64 value)
{
    publish(m_lowDiskThresholdPercent, value, this, &AppSettings::lowDiskThresholdPercentChanged);
    m_defaults.setInteger(u"lowDiskThresholdPercent"_s, value);
}

void AppSettings::setLastPhysicalCleanDate(const QDateTime& value)
{
    publish(m_lastPhysicalCleanDate, value, this, &AppSettings::lastPhysicalCleanDateChanged);
    const QString key = u"lastPhysicalCleanDate"_s;
    if (value.isValid())
        m_defaults.setReal(key, static_cast<double>(value.toMSecsSinceEpoch()) / 1000);
    else
        m_defaults.remove(key);
    noteTime();
}

void AppSettings::setExcludedPaths(const QStringList& value)
{
    publish(m_excludedPaths, value, this, &AppSettings::excludedPathsChanged);
    m_defaults.setStringArray(u"excludedPaths"_s, value);
}

std::optional<qint64> AppSettings::daysSinceLastCleaning() const
{
    if (!m_lastPhysicalCleanDate.isValid())
        return {};
    constexpr qint64 millisecondsOfDay = 86'400'000;
    return m_lastPhysicalCleanDate.msecsTo(m_clock.now()) / millisecondsOfDay;
}

QVariant AppSettings::daysSinceLastCleaningVariant() const
{
    const std::optional<qint64> days = daysSinceLastCleaning();
    return days ? QVariant(*days) : QVariant();
}

bool AppSettings::isCleaningOverdue() const
{
    if (m_cleaningReminderDays < 1)
        return false;
    const std::optional<qint64> days = daysSinceLastCleaning();
    return !days || *days >= m_cleaningReminderDays;
}

void AppSettings::noteTime()
{
    publish(m_knownDays, daysSinceLastCleaning(), this, &AppSettings::daysSinceLastCleaningChanged);
    publish(m_isKnownOverdue, isCleaningOverdue(), this, &AppSettings::isCleaningOverdueChanged);
}

void AppSettings::addExcludedPath(const QString& path)
{
    const QString standardized = standardizedPath(path, m_home);
    if (standardized.isEmpty() || m_excludedPaths.contains(standardized))
        return;
    QStringList paths = m_excludedPaths;
    paths += standardized;
    paths.sort();
    setExcludedPaths(paths);
}

void AppSettings::removeExcludedPath(const QString& path)
{
    QStringList paths = m_excludedPaths;
    paths.removeAll(path);
    setExcludedPaths(paths);
}

bool AppSettings::isExcluded(const QString& path) const
{
    const QString standardized = standardizedPath(path, m_home);
    return std::any_of(m_excludedPaths.begin(), m_excludedPaths.end(),
                       [&](const QString& excluded) { return liesIn(standardized, excluded); });
}

} // namespace brivane

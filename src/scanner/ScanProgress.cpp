#include "scanner/ScanProgress.h"

#include <QLocale>

namespace brivane {

QString ScanProgress::formattedFilesScanned() const
{
    static const QLocale grouped(QLocale::English, QLocale::UnitedStates);
    return grouped.toString(static_cast<qlonglong>(filesScanned));
}

} // namespace brivane

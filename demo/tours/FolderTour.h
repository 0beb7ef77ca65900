#pragma once

#include "demo/Tour.h"

#include <QStringList>

// What the chapters on the scanner share.
namespace brivane {

class ScanViewModel;

/// Shows the folder at `path`, which begins below the home folder.
void enterFolder(ScanViewModel& scan, const QStringList& path);

/// Both charts of a finished scan.
QCoro::Task<> showCharts(Tour& tour, ScanViewModel& scan);

} // namespace brivane

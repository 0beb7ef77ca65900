#pragma once
#include <QStringView>
namespace brivane {
class InstalledNames {
public:
    bool isLeftover(QStringView n) const { return n.contains(u'.') && !n.contains(u"installed"); }
};
class InstalledApplications {
public:
    InstalledNames names() { return {}; }
};
} // namespace brivane

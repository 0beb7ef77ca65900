#include "demo/DemoFiles.h"

#include "sandbox/SandboxMachine.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace brivane {

QByteArray demoPropertyList(const QString& entries)
{
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>%1</dict></plist>\n"_s
        .arg(entries)
        .toUtf8();
}

QString demoEntry(QStringView key, QStringView value)
{
    return u"<key>%1</key><string>%2</string>"_s.arg(key, value);
}

void DemoFiles::sparse(const QString& path, double bytes, int youngest, int oldest)
{
    auto size = static_cast<qint64>(bytes);
    while (!m_sizes.insert(size).second)
        size += 512;
    m_machine.file(path, SandboxMachine::Size{size});
    age(path, youngest, oldest);
}

void DemoFiles::age(const QString& path, int youngest, int oldest)
{
    const double days = youngest + (oldest - youngest) * chance();
    const QDateTime modified = m_now.addSecs(-static_cast<qint64>(days * 86400) - 60);
    const QDateTime accessed = m_now.addSecs(-static_cast<qint64>(days * chance() * 86400) - 30);
    m_machine.setTimes(path, modified, accessed);
}

void DemoFiles::pile(const DemoHeap& heap)
{
    for (int i = 0; i < heap.count; ++i) {
        const int folder = heap.spread > 0 ? i % heap.spread : i;
        const QString path = heap.folder.toString().replace(u'%', QString::number(folder + 1)) +
                             u'/' + heap.name.toString().replace(u'%', QString::number(i + 1));
        sparse(path, heap.smallest * std::pow(heap.largest / heap.smallest, chance()),
               heap.youngest, heap.oldest);
    }
}

} // namespace brivane

#include "platform/Pasteboard.h"

#include "platform/PathText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

class DesktopPasteboard final : public Pasteboard {
public:
    void setPath(const QString& path) override
    {
        const QByteArray bytes = PathText::toBytes(path);
        auto* const data = new QMimeData;
        // Not as QMimeData's text: where a name is no text, a wrong path would come out. X11 makes
        // all its kinds of text of the former; Wayland's programs ask for the latter.
        data->setData(u"text/plain"_s, bytes);
        data->setData(u"text/plain;charset=utf-8"_s, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
    }
};

} // namespace

std::unique_ptr<Pasteboard> Pasteboard::ofThisMachine()
{
    return std::make_unique<DesktopPasteboard>();
}

} // namespace brivane

#include "components/Fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr int defaultPixelSize = 13;

struct Families {
    QString text;
    QString symbols;
};

Families& families()
{
    static Families instance;
    return instance;
}

QString load(const QString& file)
{
    const int id = QFontDatabase::addApplicationFont(u":/brivane/fonts/"_s + file);
    const QStringList names = QFontDatabase::applicationFontFamilies(id);
    if (names.isEmpty())
        qFatal("The font %s in the program's resources cannot be read", qPrintable(file));
    return names.constFirst();
}

} // namespace

void registerFonts()
{
    if (!families().text.isEmpty())
        return;
    families().text = load(u"Inter-Regular.otf"_s);
    for (const QString& weight : {u"Medium"_s, u"SemiBold"_s, u"Bold"_s})
        load(u"Inter-"_s + weight + u".otf"_s);
    families().symbols = load(u"MaterialIcons-Regular.ttf"_s);

    QFont font(families().text);
    font.setPixelSize(defaultPixelSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    QGuiApplication::setFont(font);
}

QString textFontFamily()
{
    return families().text;
}

QString symbolFontFamily()
{
    return families().symbols;
}

} // namespace brivane

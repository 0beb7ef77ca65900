#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <span>
#include <string_view>

// Which glyph of the icon font stands for which symbol name. Screens and services name symbols; how
// a symbol looks is decided here alone.
//
// Constant data: everything may be called from any thread.
namespace brivane {

struct Symbol {
    std::u16string_view name;
    char16_t glyph; ///< Code point in the icon font, see symbolFontFamily().
};

class SymbolTable : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
    Q_PROPERTY(QStringList names READ names CONSTANT)

public:
    /// A crossed-out square: what a name without an entry looks like. It is meant to be noticed.
    static constexpr char16_t fallbackGlyph = 0xF230;

    /// All symbols, by name, each name once.
    [[nodiscard]] static std::span<const Symbol> symbols();

    [[nodiscard]] static QStringList names();
    [[nodiscard]] Q_INVOKABLE static bool contains(const QString& name);

    /// The text that draws `name` in the icon font: one character, fallbackGlyph if the name is not
    /// known.
    [[nodiscard]] Q_INVOKABLE static QString glyph(const QString& name);

    /// Family name of the icon font; empty before registerFonts().
    [[nodiscard]] static QString fontFamily();
};

} // namespace brivane

import QtQuick
import Brivane.Components

// Text in one of the program's few styles. Plain text by default: names of files are shown, never
// interpreted.
Text {
    id: root

    enum Style { LargeTitle, Title, Heading, Body, BodyStrong, Callout, Caption, Overline }

    property int textStyle: AppText.Style.Body

    readonly property int pixelSize: {
        switch (textStyle) {
        case AppText.Style.LargeTitle: return Metrics.textLargeTitle;
        case AppText.Style.Title: return Metrics.textTitle;
        case AppText.Style.Heading: return Metrics.textHeading;
        case AppText.Style.Callout: return Metrics.textCallout;
        case AppText.Style.Caption: return Metrics.textCaption;
        case AppText.Style.Overline: return Metrics.textCaption;
        default: return Metrics.textBody;
        }
    }
    readonly property int fontWeight: {
        switch (textStyle) {
        case AppText.Style.LargeTitle: return Font.Bold;
        case AppText.Style.Title: return Font.DemiBold;
        case AppText.Style.Heading: return Font.DemiBold;
        case AppText.Style.BodyStrong: return Font.Medium;
        case AppText.Style.Overline: return Font.DemiBold;
        default: return Font.Normal;
        }
    }

    color: textStyle >= AppText.Style.Callout ? ColorPalette.secondaryText : ColorPalette.primaryText
    font.pixelSize: pixelSize
    font.weight: fontWeight
    // Large type is set a little tighter, small capitals a little wider.
    font.letterSpacing: textStyle === AppText.Style.Overline ? 0.4 : pixelSize >= Metrics.textTitle ? -0.3 : 0
    textFormat: Text.PlainText
    Accessible.role: textStyle <= AppText.Style.Heading ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text
    Accessible.focusable: false // of which Qt believes the opposite
}

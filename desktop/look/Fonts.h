#pragma once

#include <QFont>
#include <QString>
#include <string_view>

namespace tolvane::desktop {

/// What a piece of text is; the scale gives size, weight and line height.
enum class TextRole { display, title, headline, body, section, small, caption };

/// The type scale. Sizes are points times the user's text factor; the screen's own resolution is Qt's business.
/// Where "Inter" is not installed, the system's font stands in.
class Fonts {
public:
    /// Loads the digits font that the program carries. `factor` 2 means text of 200 %.
    explicit Fonts(double factor = 1);

    QFont font(TextRole role) const;
    QFont font(TextRole role, QFont::Weight weight) const;
    /// All digits equally wide: for numbers, times, axis labels, tags and badges.
    QFont figures(TextRole role) const;
    QFont figures(TextRole role, QFont::Weight weight) const;
    /// For command lines.
    QFont fixed() const;

    /// Height of one line of that text, in device-independent pixels.
    int lineHeight(TextRole role) const;
    /// The larger of `least` and a line of the role with `padding` around.
    int height(TextRole role, int least, int padding = 8) const;
    double factor() const { return factor_; }
    /// Icons and the like grow with the text that they stand beside.
    int scaled(int pixels) const;

private:
    QFont make(const QString& family, TextRole role, QFont::Weight weight) const;

    double factor_;
    QString family_;
    QString displayFamily_;
    QString figuresFamily_;
};

}  // namespace tolvane::desktop

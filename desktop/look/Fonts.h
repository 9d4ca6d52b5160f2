#pragma once

#include <QFont>
#include <QString>
#include <string_view>

namespace tolvane::desktop {

/// The role of a text; the type scale gives it a size, weight and line height.
enum class TextRole { display, title, headline, body, section, small, caption };

/// The type scale. Sizes are points times the user's text factor; Qt handles the screen's resolution. Falls back to the
/// system's font where "Inter" is not installed.
class Fonts {
public:
    /// Loads the embedded font with tabular digits. A `factor` of 2 means text at 200 %.
    explicit Fonts(double factor = 1);

    QFont font(TextRole role) const;
    QFont font(TextRole role, QFont::Weight weight) const;
    /// A font with tabular digits, for numbers, times, axis labels, tags and badges.
    QFont figures(TextRole role) const;
    QFont figures(TextRole role, QFont::Weight weight) const;
    /// The monospaced font, for command lines.
    QFont fixed() const;

    /// Height of one line of text, in device-independent pixels.
    int lineHeight(TextRole role) const;
    /// `least`, or one line of the role plus `padding` if that is larger.
    int height(TextRole role, int least, int padding = 8) const;
    double factor() const { return factor_; }
    /// For icons and other shapes that grow with the text beside them.
    int scaled(int pixels) const;

private:
    QFont make(const QString& family, TextRole role, QFont::Weight weight) const;

    double factor_;
    QString family_;
    QString displayFamily_;
    QString figuresFamily_;
};

}  // namespace tolvane::desktop

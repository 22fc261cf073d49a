#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

// The text encodings that reports can be written in: every converter ICU has, each under one
// display name (its IANA name, or ICU's own name where IANA has none). Any alias ICU knows is
// accepted wherever an encoding is named.
class TextEncodings {
public:
    enum class Conversion {
        Lossy,  // characters the encoding lacks become its substitution character
        Strict, // any such character makes the whole conversion fail
    };

    // Display names without duplicates, sorted without regard to case.
    static const QStringList &availableNames();
    // Mac OS Roman, preselected in the export options.
    static QString defaultName();
    // The display name of the encoding a name or alias stands for; empty when ICU knows none.
    static QString displayName(const QString &nameOrAlias);

    // The text in the encoding; nothing when the encoding is unknown, or in strict mode when a
    // character cannot be written in it.
    static std::optional<QByteArray> encode(const QString &text, const QString &encoding,
                                            Conversion mode);
};

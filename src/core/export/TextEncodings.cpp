#include "TextEncodings.h"

#include <algorithm>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

using namespace Qt::StringLiterals;

namespace {

struct ConverterCloser {
    void operator()(UConverter *converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// An empty name would open ICU's default converter, which is no choice of the user's.
Converter open(const QString &name) {
    if (name.isEmpty())
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.toLatin1().constData(), &status));
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

QString displayNameOfConverter(const char *converterName) {
    UErrorCode status = U_ZERO_ERROR;
    const char *iana = ucnv_getStandardName(converterName, "IANA", &status);
    return QString::fromLatin1(U_SUCCESS(status) && iana ? iana : converterName);
}

} // namespace

const QStringList &TextEncodings::availableNames() {
    static const QStringList names = [] {
        QStringList list;
        const int32_t count = ucnv_countAvailable();
        for (int32_t i = 0; i < count; ++i)
            list.append(displayNameOfConverter(ucnv_getAvailableName(i)));
        list.removeDuplicates();
        std::sort(list.begin(), list.end(), [](const QString &a, const QString &b) {
            const int order = a.compare(b, Qt::CaseInsensitive);
            return order != 0 ? order < 0 : a < b;
        });
        return list;
    }();
    return names;
}

QString TextEncodings::defaultName() {
    return u"macintosh"_s;
}

QString TextEncodings::displayName(const QString &nameOrAlias) {
    const Converter converter = open(nameOrAlias);
    if (!converter)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    const char *name = ucnv_getName(converter.get(), &status);
    return U_SUCCESS(status) ? displayNameOfConverter(name) : QString();
}

std::optional<QByteArray> TextEncodings::encode(const QString &text, const QString &encoding,
                                                Conversion mode) {
    const Converter converter = open(encoding);
    if (!converter)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    if (mode == Conversion::Strict) {
        ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                              &status);
    }
    const auto *source = reinterpret_cast<const UChar *>(text.utf16());
    const auto length = int32_t(text.size());
    QByteArray bytes(UCNV_GET_MAX_BYTES_FOR_STRING(length, ucnv_getMaxCharSize(converter.get())),
                     Qt::Uninitialized);
    int32_t written = ucnv_fromUChars(converter.get(), bytes.data(), int32_t(bytes.size()), source,
                                      length, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        // Stateful encodings may need more than the estimate for their shift sequences.
        status = U_ZERO_ERROR;
        bytes.resize(written);
        written = ucnv_fromUChars(converter.get(), bytes.data(), int32_t(bytes.size()), source,
                                  length, &status);
    }
    if (U_FAILURE(status))
        return std::nullopt;
    bytes.truncate(written);
    return bytes;
}

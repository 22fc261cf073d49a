#include "CurrencyFormatter.h"

#include "LocaleFormat.h"

#include "../Logging.h"
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/unistr.h>

CurrencyFormatter::CurrencyFormatter(const QString &localeName)
    : m_localeName(localeName.isEmpty() ? LocaleFormat::localeNameFor("LC_MONETARY") : localeName) {
    if (m_localeName == u"C" || m_localeName == u"POSIX")
        m_localeName = QStringLiteral("en_US_POSIX");
    UErrorCode status = U_ZERO_ERROR;
    m_format.reset(icu::NumberFormat::createCurrencyInstance(
        icu::Locale(m_localeName.toLatin1().constData()), status));
    if (U_FAILURE(status)) {
        qCWarning(lcLocale) << "no currency format for locale" << m_localeName
                            << u_errorName(status);
        m_format.reset();
    }
}

CurrencyFormatter::~CurrencyFormatter() = default;

QString CurrencyFormatter::format(double amount) const {
    if (!m_format)
        return QString::number(amount, 'f', 2);
    icu::UnicodeString out;
    m_format->format(amount, out);
    return QString(reinterpret_cast<const QChar *>(out.getBuffer()), out.length());
}

const CurrencyFormatter &CurrencyFormatter::fallback() {
    static const CurrencyFormatter instance;
    return instance;
}

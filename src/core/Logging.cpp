#include "Logging.h"

Q_LOGGING_CATEGORY(lcModel, "hourfold.model")
Q_LOGGING_CATEGORY(lcFile, "hourfold.file")
Q_LOGGING_CATEGORY(lcLocale, "hourfold.locale")
Q_LOGGING_CATEGORY(lcPreferences, "hourfold.preferences")
Q_LOGGING_CATEGORY(lcStores, "hourfold.stores")
Q_LOGGING_CATEGORY(lcSearch, "hourfold.search")
Q_LOGGING_CATEGORY(lcApp, "hourfold.app")
Q_LOGGING_CATEGORY(lcDesktop, "hourfold.desktop")

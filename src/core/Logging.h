#pragma once

#include <QLoggingCategory>

// One logging category per area of the program.
Q_DECLARE_LOGGING_CATEGORY(lcModel)
Q_DECLARE_LOGGING_CATEGORY(lcFile)
Q_DECLARE_LOGGING_CATEGORY(lcLocale)
Q_DECLARE_LOGGING_CATEGORY(lcPreferences)
Q_DECLARE_LOGGING_CATEGORY(lcStores)
Q_DECLARE_LOGGING_CATEGORY(lcSearch)
Q_DECLARE_LOGGING_CATEGORY(lcApp)
// Desktop services: notifications, remote keys, sleep and idle.
Q_DECLARE_LOGGING_CATEGORY(lcDesktop)

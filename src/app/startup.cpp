#include "startup.h"

#include <QCoreApplication>

#include <clocale>

namespace Startup {

void prepareApplication()
{
    // Qt takes the whole C locale from the environment; under a comma locale printf, strtod
    // and libav's option parsing would then read and write "1,5". Numbers stay in the C form;
    // texts keep the user's character set.
    std::setlocale(LC_NUMERIC, "C");
    QCoreApplication::setOrganizationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CUEBOX_VERSION));
}

} // namespace Startup

#pragma once

// What both the window and the command line set up once their application object exists.
namespace Startup {

void prepareApplication();

} // namespace Startup

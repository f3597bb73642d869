// The library's version. The build system, the package files and the program read it here.
#pragma once

#define VARNEL_VERSION_MAJOR 1
#define VARNEL_VERSION_MINOR 0
#define VARNEL_VERSION_PATCH 0
/// As text, "major.minor.patch".
#define VARNEL_VERSION "1.0.0"

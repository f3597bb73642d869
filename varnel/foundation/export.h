// VARNEL_API marks what libvarnel.so gives to its hosts; everything else stays hidden.
#pragma once

#define VARNEL_API __attribute__((visibility("default")))

// Everything that a host includes.
#pragma once

#include "varnel/foundation/colors.h"
#include "varnel/foundation/error.h"
#include "varnel/foundation/notice.h"
#include "varnel/foundation/numbers.h"
#include "varnel/foundation/planes.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/strings.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"

// Charts in a few lines: figures, tables and the data that both take.
#pragma once

#include "varnel/plot/data.h"
#include "varnel/plot/dates.h"
#include "varnel/plot/figure.h"
#include "varnel/plot/table.h"

// How the operations of a view are watched.
#pragma once

#include "varnel/chart/chart_view.h"
#include "varnel/foundation/detail/progress.h"

namespace varnel {

/// Runs `work` under the view's handler; false when it was stopped.
template <class Work>
bool CChartView3D::Watched(const char* what, Work&& work) {
    m_Stopped = 0;
    const bool done = detail::Watch(m_ProgressHandler, what).Run(work);
    m_Stopped = done ? 0 : 1;
    return done;
}

}  // namespace varnel

#include "varnel/chartobj/detail/hiding_surfaces.h"

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"

namespace varnel::detail {

const NearestDepths& HidingSurfaces::On(const Screen& screen) {
    if (m_Depths) return *m_Depths;
    m_Depths.emplace(screen);
    for (const CChartObj3D* object : m_Surfaces) {
        if (object->GetPolysurface() == nullptr || object->GetTransform() == nullptr) continue;
        const bool isFlat = object->GetChartType() == POLYSURFACECHART2D;
        m_Depths->Add(
            SurfaceMesh(*object->GetTransform(), *object->GetPolysurface(),
                        {isFlat ? object->GetProjectionPlane() : -1, object->GetConstValue()}));
    }
    return *m_Depths;
}

}  // namespace varnel::detail

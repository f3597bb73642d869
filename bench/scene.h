// What the programs of pictures draw.
#pragma once

#include "varnel/varnel.h"

/// A view with one chart over -1..1 and one data set; each picture is turned a little further.
class Scene {
 public:
    Scene() : m_Window(1024, 768), m_View(&m_Window, 1024, 768) {
        varnel::CChart3D* const chart =
            m_View.NewChart3D({-1, -1, -1, 0}, {1, 1, 1, 0}, &m_Transform);
        m_Object = chart->NewChartObj(m_Transform);
        m_View.SetViewSizePrinter();
    }
    varnel::CChartObj3D& Object() { return *m_Object; }
    void DrawNext() {
        m_Angle += 7.0;
        m_Transform->SetRotate({-30, 0, m_Angle, 0});
        m_View.DrawView();
    }

 private:
    varnel::CWnd m_Window;
    varnel::CChartView3D m_View;
    varnel::CTransform3D* m_Transform = nullptr;
    varnel::CChartObj3D* m_Object = nullptr;
    double m_Angle = 0.0;
};

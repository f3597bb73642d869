// CChartView3D: the chart file.
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/files.h"

namespace varnel {

template <class Archive>
void CChartView3D::Record(Archive& record) {
    record(m_FontWeight, m_FontOption, m_FontItalics, m_FontUnderline, m_FontName, m_ViewBkColor,
           m_ViewBkMode, m_ViewBorderThickness, m_ViewBorderColor, m_BorderEnable);
}

void CChartView3D::Save(const CString& fileName) {
    const auto file = OpenOutputFile(fileName);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "Save");
    detail::WithFile(file.get(), {ERR3DCLASS_CHARTVIEW3D, "Save"}, [this](File& f) {
        detail::RecordWriter record(f);
        Record(record);
        record(std::int32_t{m_ChartList.GetCount()});
        for (const auto& chart : m_ChartList)
            chart->Save(&f);
        record(std::int32_t{m_LegendList.GetCount()});
        for (const auto& legend : m_LegendList)
            legend->Save(&f);
        m_pHeader->Save(&f);
        f.Commit();
    });
}

void CChartView3D::Load(const CString& fileName) {
    const auto file = OpenInputFile(fileName);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_CHARTVIEW3D, "Load");
    detail::WithFile(file.get(), {ERR3DCLASS_CHARTVIEW3D, "Load"}, [this](File& f) {
        detail::RecordReader record(f);
        Record(record);
        m_FontChanged = 1;
        std::int32_t charts = 0;
        record(charts);
        for (std::int32_t i = 0; i < charts && record.Has(1, 1); ++i)
            NewChart3D()->Load(&f);
        std::int32_t legends = 0;
        record(legends);
        for (std::int32_t i = 0; i < legends && record.Has(1, 1); ++i)
            NewLegend3D()->Load(&f);
        m_pHeader->Load(&f);
    });
    m_LoadComplete = file->RanDry() ? 0 : 1;
}

}  // namespace varnel

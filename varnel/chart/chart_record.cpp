// CChart3D: its record in the chart file, with those of everything that it owns.
#include <algorithm>
#include <set>

#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"
#include "varnel/solids/aux_object.h"
#include "varnel/transform/transform.h"

namespace varnel {

template <class Archive>
void CChart3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_ViewAspect, m_ViewportAspect, m_FontHeightSF,
           m_FontSize, m_Spare, m_BorderThickness, m_BorderColor, m_ChartEnable, m_BorderEnable,
           m_ChartViewport, m_ChartPosition, m_LightPosition, m_AmbientLight, m_DiffuseLight,
           m_ChartBkColor, m_TextureColors, m_TextureMin, m_TextureMax, m_TextureMode,
           m_NumTextureColors);
}

namespace {

template <class T>
void SaveList(detail::RecordWriter& record, const ObjectList<T>& list) {
    record(std::int32_t{list.GetCount()});
    for (const auto& item : list)
        item->Save(&record.GetFile());
}

template <class T>
void Renumber(const ObjectList<T>& list, const CTransform3D* of, int id) {
    for (const auto& item : list)
        if (item->GetTransform() == of) item->SetTransformID(id);
}

}  // namespace

void CChart3D::MakeTransformIDsUnique() {
    std::set<int> taken;
    for (const auto& transform : m_TransformList) {
        if (taken.insert(transform->GetSelfID()).second) continue;
        int id = CTransform3D::NewSelfID();
        while (!taken.insert(id).second)
            id = CTransform3D::NewSelfID();
        transform->SetSelfID(id);
        Renumber(m_AxesList, transform.get(), id);
        Renumber(m_TextList, transform.get(), id);
        Renumber(m_ChartObjList, transform.get(), id);
        Renumber(m_AuxObjList, transform.get(), id);
        Renumber(m_DIBObjList, transform.get(), id);
    }
}

void CChart3D::VisitAdded(detail::AddedFields& fields) {
    fields.Object("header", m_pHeader.get());
    fields.List("transform", m_TransformList);
    fields.List("axes", m_AxesList);
    fields.List("text", m_TextList);
    fields.List("object", m_ChartObjList);
    fields.List("solid", m_AuxObjList);
    fields.List("picture", m_DIBObjList);
}

void CChart3D::Save(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_CHART3D, "Save"}, [this](File& f) {
        MakeTransformIDsUnique();
        detail::RecordWriter record(f);
        Record(record);
        m_pHeader->Save(&f);
        SaveList(record, m_TransformList);
        SaveList(record, m_AxesList);
        SaveList(record, m_TextList);
        SaveList(record, m_ChartObjList);
        SaveList(record, m_AuxObjList);
        SaveList(record, m_DIBObjList);
    });
}

namespace {

/// Reads a list: a count and as many records, fewer when the file ends before. `bind` attaches an
/// object to the chart; an object that the file cut off and that therefore cannot be attached is
/// left out.
template <class T, class Bind>
void LoadList(File& file, ObjectList<T>& list, const char* operation, Bind bind) {
    std::int32_t count = 0;
    detail::RecordReader record(file);
    record(count);
    for (std::int32_t i = 0; i < count; ++i) {
        if (!record.Has(1, 1)) return;
        auto item = detail::NewObject<T>({ERR3DCLASS_CHART3D, operation});
        item->Load(&file);
        if (!bind(*item)) return;
        list.Append(std::move(item));
    }
}

}  // namespace

void CChart3D::Load(HANDLE file) {
    const bool empty = m_TransformList.IsEmpty() && m_AxesList.IsEmpty() && m_TextList.IsEmpty() &&
                       m_ChartObjList.IsEmpty() && m_AuxObjList.IsEmpty() && m_DIBObjList.IsEmpty();
    if (!empty) return;
    detail::WithFile(file, {ERR3DCLASS_CHART3D, "Load"}, [this](File& f) {
        detail::RecordReader record(f);
        Record(record);
        m_NumTextureColors = std::clamp(m_NumTextureColors, 0, kTextureColors);
        m_pHeader->Load(&f);
        // An object's transform is found by the identifier in its record. In a file that was cut
        // off inside the record the identifier may be missing; in a whole file an unknown one is
        // the object's own error.
        const auto bound = [this, &f](auto& object, auto init) {
            CTransform3D* const transform = MatchTransformID(object.GetTransformID());
            if (transform == nullptr && f.RanDry()) return false;
            init(transform);
            return true;
        };
        LoadList(f, m_TransformList, "NewTransform", [this](CTransform3D& t) {
            t.InitTransform(m_pOpenGL);
            return true;
        });
        LoadList(f, m_AxesList, "NewAxes", [&](CAxes3D& o) {
            return bound(o, [&](CTransform3D* t) { o.InitAxes(m_pOpenGL, t); });
        });
        CFont3D* const font = m_pOpenGL != nullptr ? m_pOpenGL->GetFont() : nullptr;
        LoadList(f, m_TextList, "NewChartTextObj", [&](CTextObj3D& o) {
            return bound(o, [&](CTransform3D* t) { o.InitTextObj(m_pOpenGL, font, t); });
        });
        LoadList(f, m_ChartObjList, "NewChartObj", [&](CChartObj3D& o) {
            return bound(o, [&](CTransform3D* t) { o.InitChartObj3D(m_pOpenGL, t); });
        });
        LoadList(f, m_AuxObjList, "NewAuxObj", [&](CAuxObj3D& o) {
            return bound(o, [&](CTransform3D* t) { o.InitAuxObj(m_pOpenGL, t); });
        });
        LoadList(f, m_DIBObjList, "NewDIBObj", [&](CDIBObj3D& o) {
            return bound(o, [&](CTransform3D* t) { o.InitDIBObj(m_pOpenGL, t); });
        });
    });
}

}  // namespace varnel

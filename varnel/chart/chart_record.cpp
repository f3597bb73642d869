// CChart3D: its record in the chart file, with those of everything that it owns.
#include <algorithm>
#include <set>
#include <utility>

#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/bitmap/detail/loaded_pictures.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"
#include "varnel/solids/aux_object.h"
#include "varnel/transform/transform.h"

namespace varnel {

template <class Archive>
void CChart3D::Record(Archive& record, Saved& saved) {
    record(detail::CounterField{nSelfID}, saved.viewAspect, saved.viewportAspect,
           saved.fontHeightSF, saved.fontSize, saved.spare, saved.borderThickness,
           saved.borderColor, saved.chartEnable, saved.borderEnable, saved.viewport, saved.position,
           saved.lightPosition, saved.ambientLight, saved.diffuseLight, saved.bkColor);
    record.Array(saved.textureColors.data(), saved.textureColors.size());
    record(saved.textureMin, saved.textureMax, saved.textureMode, saved.numTextureColors);
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

template <class T>
void TellUnbound(const ObjectList<T>& list, const char* kind) {
    int index = 0;
    for (const auto& item : list) {
        if (item->GetTransform() == nullptr)
            detail::Diagnose("Save", kind, " ", index,
                             " has no transform: what is saved cannot be loaded again");
        ++index;
    }
}

}  // namespace

void CChart3D::MakeTransformIDsUnique() {
    std::set<int> taken;
    for (const auto& transform : m_Objects.transforms) {
        if (taken.insert(transform->GetSelfID()).second) continue;
        int id = CTransform3D::NewSelfID();
        while (!taken.insert(id).second)
            id = CTransform3D::NewSelfID();
        transform->SetSelfID(id);
        Renumber(m_Objects.axes, transform.get(), id);
        Renumber(m_Objects.texts, transform.get(), id);
        Renumber(m_Objects.objects, transform.get(), id);
        Renumber(m_Objects.solids, transform.get(), id);
        Renumber(m_Objects.pictures, transform.get(), id);
    }
}

void CChart3D::TellWhatCannotBeLoaded() const {
    // Chart objects tell it themselves.
    TellUnbound(m_Objects.axes, "axes object");
    TellUnbound(m_Objects.texts, "text object");
    TellUnbound(m_Objects.solids, "auxiliary object");
    TellUnbound(m_Objects.pictures, "bitmap object");
}

void CChart3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("autoFit", &Added::autoFit);
        field("autoText", &Added::autoText);
        field("lineAreas", &Added::lineAreas);
        field("noDataGrey", &Added::noDataGrey);
        field("fillDepth", &Added::fillDepth);
        field("lightLimit", &Added::lightLimit);
        field("viewLight", &Added::viewLight);
        field("lightDirection", &Added::lightDirection);
        field("lightAmbient", &Added::lightAmbient);
        field("lightDiffuse", &Added::lightDiffuse);
        field("lightSpecular", &Added::lightSpecular);
        field("lightShininess", &Added::lightShininess);
    });
    fields.Object("header", m_pHeader.get());
    fields.List("transform", m_Objects.transforms);
    fields.List("axes", m_Objects.axes);
    fields.List("text", m_Objects.texts);
    fields.List("object", m_Objects.objects);
    fields.List("solid", m_Objects.solids);
    fields.List("picture", m_Objects.pictures);
}

void CChart3D::Save(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_CHART3D, "Save"}, [this](File& f) {
        MakeTransformIDsUnique();
        TellWhatCannotBeLoaded();
        detail::RecordWriter record(f);
        Record(record, m_Saved);
        m_pHeader->Save(&f);
        SaveList(record, m_Objects.transforms);
        SaveList(record, m_Objects.axes);
        SaveList(record, m_Objects.texts);
        SaveList(record, m_Objects.objects);
        SaveList(record, m_Objects.solids);
        SaveList(record, m_Objects.pictures);
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

CTransform3D* CChart3D::FindTransform(const Objects& objects, int id) {
    for (const auto& transform : objects.transforms)
        if (transform->GetSelfID() == id) return transform.get();
    return nullptr;
}

void CChart3D::LoadObjects(File& f, Objects& objects) {
    // An object's transform is found by the identifier in its record. In a file that was cut off
    // inside the record the identifier may be missing; in a whole file an unknown one is the
    // object's own error.
    const auto bound = [&](auto& object, auto init) {
        CTransform3D* const transform = FindTransform(objects, object.GetTransformID());
        if (transform == nullptr && f.RanDry()) return false;
        init(transform);
        return true;
    };
    LoadList(f, objects.transforms, "NewTransform", [this](CTransform3D& t) {
        t.InitTransform(m_pOpenGL);
        return true;
    });
    LoadList(f, objects.axes, "NewAxes", [&](CAxes3D& o) {
        return bound(o, [&](CTransform3D* t) { o.InitAxes(m_pOpenGL, t); });
    });
    CFont3D* const font = m_pOpenGL != nullptr ? m_pOpenGL->GetFont() : nullptr;
    LoadList(f, objects.texts, "NewChartTextObj", [&](CTextObj3D& o) {
        return bound(o, [&](CTransform3D* t) { o.InitTextObj(m_pOpenGL, font, t); });
    });
    LoadList(f, objects.objects, "NewChartObj", [&](CChartObj3D& o) {
        return bound(o, [&](CTransform3D* t) { o.InitChartObj3D(m_pOpenGL, t); });
    });
    LoadList(f, objects.solids, "NewAuxObj", [&](CAuxObj3D& o) {
        return bound(o, [&](CTransform3D* t) { o.InitAuxObj(m_pOpenGL, t); });
    });
    LoadList(f, objects.pictures, "NewDIBObj", [&](CDIBObj3D& o) {
        return bound(o, [&](CTransform3D* t) { o.InitDIBObj(m_pOpenGL, t); });
    });
}

void CChart3D::Load(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_CHART3D, "Load"}, [this](File& f) {
        const detail::LoadedPictures pictures;
        // Apart from the chart, which an error leaves as it was.
        detail::RecordReader record(f);
        Saved saved = m_Saved;
        Record(record, saved);
        saved.numTextureColors = std::clamp(saved.numTextureColors, 0, kTextureColors);
        CHeader3D header;
        header.CopyFrom(*m_pHeader);
        header.Load(&f);
        Objects objects;
        LoadObjects(f, objects);
        m_Saved = saved;
        m_pHeader->CopyFrom(header);
        std::swap(m_Objects, objects);
    });
}

}  // namespace varnel

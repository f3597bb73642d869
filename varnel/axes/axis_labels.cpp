#include "varnel/axes/axis_labels.h"

#include <algorithm>

#include "varnel/axes/axis.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/axes/detail/axis_points.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/axes/detail/label_layout.h"
#include "varnel/axes/detail/label_text.h"
#include "varnel/axes/text_object.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/counts.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::kBlack;

/// Labels of a logarithmic x or y axis stand lower than the axis by this much of a working range.
constexpr double kLogLabelDrop = 0.02;

/// The opposite of a direction 0..5.
int Opposite(int dir) {
    return dir < 0 || dir > 5 ? dir : (dir + 3) % 6;
}

}  // namespace

int CAxisLabels3D::nSelfID = 0;

/// One calculation of all labels: what is the same for each, and how far it has come.
struct CAxisLabels3D::Run {
    bool isLog = false;
    double min = 0.0;
    double max = 0.0;
    double center = 0.0;
    double i1 = 0.0;  ///< the two other coordinates of every label
    double i2 = 0.0;
    double offset = 0.0;     ///< distance off the axis, a fraction of a working range
    double tolerance = 0.0;  ///< within which a label counts as an end label
    detail::Justification just;
    int index = 0;         ///< of the next label; counts hidden ones, too
    point3Dtype location;  ///< of the last label, in data units
};

CAxisLabels3D::CAxisLabels3D() {
    InitAxisLabelsDefaults();
}

CAxisLabels3D::CAxisLabels3D(COpenGL* gl, CTransform3D* transform, CAxis3D* axis)
    : CAxisLabels3D() {
    InitAxisLabels(gl, transform, axis);
}

CAxisLabels3D::~CAxisLabels3D() = default;

void CAxisLabels3D::InitAxisLabelsDefaults() {
    m_pOpenGL = nullptr;
    m_pAxis = nullptr;
    m_pTransform = nullptr;
    m_LabelObjs.RemoveAll();
    m_Saved = {};
    m_pLabelsStrings.reset();
    m_Added = {};
    InitLabelJustTable();
    detail::Count(nSelfID);
    m_pTitleObj =
        detail::NewObject<CTextObj3D>({ERR3DCLASS_AXISLABELS3D, "InitAxisLabelsDefaults"});
}

void CAxisLabels3D::InitAxisLabels(COpenGL* gl, CTransform3D* transform, CAxis3D* axis) {
    constexpr detail::Origin origin{ERR3DCLASS_AXISLABELS3D, "InitAxisLabels"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pOpenGL = gl;
    m_pTransform = transform;
    m_pAxis = axis;
    if (axis != nullptr) m_Saved.m_AxisType = axis->GetAxisType();
    m_pTitleObj->InitTextObj(gl, gl->GetFont(), transform);
    m_Saved.m_TitlePlane = CalcTitlePlane(m_Saved.m_AxisType);
    m_pTitleObj->SetTextPlane(m_Saved.m_TitlePlane);
    m_pTitleObj->SetJustify(m_Saved.m_TitleXJust, m_Saved.m_TitleYJust);
    m_pTitleObj->SetRotation(m_Saved.m_TitleRotation);
    m_pTitleObj->SetColor(m_Saved.m_LabelsColor);
    m_Saved.m_nTransformID = transform->GetSelfID();
}

void CAxisLabels3D::SetAxisLabels(int plane, int rotation, int dir, int decimals, int ends,
                                  const RGBDType& color, const CString* strings, int count) {
    m_Saved.m_LabelsPlane = plane;
    m_Saved.m_LabelsRotation = rotation;
    m_Saved.m_LabelsDir = dir;
    m_Saved.m_LabelsDecimals = decimals;
    m_Saved.m_LabelsEnds = ends;
    m_Saved.m_LabelsColor = color;
    m_Saved.m_bLabelsEnable = 1;
    const detail::CalledOperation call;
    InitTicStringsStorage(strings, count);
}

void CAxisLabels3D::SetAxisLabels(int plane, int rotation, int dir, int decimals, int ends,
                                  const RGBDType& color, std::span<const CString> strings) {
    SetAxisLabels(plane, rotation, dir, decimals, ends, color);
    InitTicStringsStorage(strings);
}

void CAxisLabels3D::SetAxisLabelsStrings(const CString* strings, int count) {
    const detail::CalledOperation call;
    if (strings != nullptr) {
        InitTicStringsStorage(strings, count);
    } else {
        DeleteTicStringsStorage();
    }
}

void CAxisLabels3D::InitTicStringsStorage(const CString* strings, int count) {
    if (strings == nullptr) return;
    if (count < 0)
        detail::Raise(ERR3D_OBJECT_NEW, ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage",
                      detail::Say("the number of strings is ", count));
    // The new copies are made first: `strings` may be the array that is kept here.
    auto copies = detail::AllocateOrRaise(
        ERR3D_OBJECT_NEW, {ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage"}, [&] {
            auto array = std::make_unique<CString[]>(static_cast<std::size_t>(count));
            std::copy(strings, strings + count, array.get());
            return array;
        });
    m_pLabelsStrings = std::move(copies);
    m_Saved.m_NumLabelsStrings = count;
    m_Saved.m_bStringsEnable = 1;
}

void CAxisLabels3D::InitTicStringsStorage(std::span<const CString> strings) {
    // An empty span may have no address, which would keep the strings set before.
    static const CString none;
    InitTicStringsStorage(
        strings.empty() ? &none : strings.data(),
        detail::CountOf(strings, {ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage"}));
}

void CAxisLabels3D::DeleteTicStringsStorage() {
    m_pLabelsStrings.reset();
}

void CAxisLabels3D::SetAxisTitle(int plane, int rotation, int dir, int /*ignored*/, int xJust,
                                 int yJust, const RGBDType& color, const CString& title) {
    m_Saved.m_TitlePlane = plane;
    m_Saved.m_TitleRotation = rotation;
    m_Saved.m_TitleDir = dir;
    m_Saved.m_TitleXJust = xJust;
    m_Saved.m_TitleYJust = yJust;
    m_Saved.m_TitleColor = color;
    SetAxisTitleString(title);
    m_Saved.m_bAutoTitle = 0;
}

void CAxisLabels3D::SetAxisTitleString(const CString& title) {
    m_pTitleObj->SetString(title);
}

void CAxisLabels3D::GetAxisTitleString(CString& title) const {
    m_pTitleObj->GetString(title);
}

void CAxisLabels3D::DrawAxisLabels() {
    FreeLabelObjs();
    CalcAxisLabels();
    DrawCalculated();
}

void CAxisLabels3D::DrawCalculated() {
    for (const auto& label : m_LabelObjs) {
        if (!m_pOpenGL->TakeLabelCharacters(label->GetString().size())) break;
        label->OutText();
    }
    m_pTitleObj->OutTextNorm();
}

bool CAxisLabels3D::CanCalculate() const {
    return m_Saved.m_bLabelsEnable != 0 && m_pOpenGL != nullptr && m_pTransform != nullptr &&
           m_pAxis != nullptr;
}

void CAxisLabels3D::CalcAxisLabels() {
    if (!CanCalculate()) return;
    if (m_pTransform->GetAxisScaleMode(m_Saved.m_AxisType) != 0) {
        CalcLogAxisLabels();
    } else {
        CalcLinAxisLabels();
    }
}

CAxisLabels3D::Run CAxisLabels3D::StartRun() const {
    Run run;
    run.isLog = m_pTransform->GetAxisScaleMode(m_Saved.m_AxisType) != 0;
    const auto limit = [&](int axis, double value) {
        return run.isLog ? m_pTransform->LogLimits(axis, value) : value;
    };
    run.min = limit(m_Saved.m_AxisType, m_pAxis->GetAxisMin());
    run.max = limit(m_Saved.m_AxisType, m_pAxis->GetAxisMax());
    run.center = limit(m_Saved.m_AxisType, m_pAxis->GetAxisIntercept(0));
    run.i1 = limit(m_pAxis->GetAxisInterceptAxis(1), m_pAxis->GetAxisIntercept(1));
    run.i2 = limit(m_pAxis->GetAxisInterceptAxis(2), m_pAxis->GetAxisIntercept(2));
    const double unit = std::max(m_pAxis->GetAxisMajorTicLength(), m_pAxis->GetAxisWallThickness());
    run.offset = m_Saved.m_LabelsTicOffset * unit;
    run.tolerance = m_pAxis->GetAxisRange() / 1000.0;
    const bool inverted = m_pTransform->IsScaleInverted(m_Saved.m_LabelsDir) != 0;
    run.just = detail::LabelJustification(
        m_Saved.m_JustTable, {m_Saved.m_AxisType, m_Saved.m_LabelsPlane, m_Saved.m_LabelsRotation,
                              m_Saved.m_LabelsDir, m_Saved.m_LabelsXJust, m_Saved.m_LabelsYJust,
                              inverted, m_Saved.m_LabelsFlipX != 0, m_Saved.m_LabelsFlipY != 0});
    return run;
}

/// visit(value) for every label in the order of the user strings, whether it may be shown or not.
template <class Visit>
void CAxisLabels3D::WalkLabels(const Run& run, Visit&& visit) const {
    const int nthTic = m_pAxis->GetAxisNthTicMajor();
    const std::span<const double> values =
        m_Added.values.empty() ? m_pAxis->GetMajorTicValues() : m_Added.values;
    if (!values.empty()) {
        for (const double value : values)
            visit(value);
    } else if (run.isLog) {
        if (nthTic != 0) detail::WalkLogLabels(run.center, run.min, run.max, nthTic < 2, visit);
    } else {
        detail::WalkLinear(run.center, nthTic * m_pAxis->GetAxisTicSpace(), run.min, run.max,
                           [&](double value, int) { visit(value); });
    }
}

void CAxisLabels3D::CalcLinAxisLabels() {
    if (!CanCalculate()) return;
    m_pOpenGL->SetFillStyle3D(m_Saved.m_LabelsColor, kBlack, kBlack);
    Run run = StartRun();
    detail::PointOnAxis(m_Saved.m_AxisType, run.min, run.i1, run.i2, run.location);
    WalkLabels(run, [&](double value) { CalcLabel(run, value); });
    CalcAxisTitle(m_pAxis, run.location);
}

void CAxisLabels3D::CalcLogAxisLabels() {
    if (!CanCalculate() || m_pAxis->GetAxisNthTicMajor() == 0) return;
    m_pOpenGL->SetFillStyle3D(m_Saved.m_LabelsColor, kBlack, kBlack);
    Run run = StartRun();
    detail::PointOnAxis(m_Saved.m_AxisType, run.min, run.i1, run.i2, run.location);
    if (m_Saved.m_AxisType == 0 || m_Saved.m_AxisType == 1) run.i2 = LoweredIntercept(run.i2);
    WalkLabels(run, [&](double value) { CalcLabel(run, value); });
    CalcAxisTitle(m_pAxis, run.location);
}

/// The height of labels below an x or y axis. A logarithmic z axis has no place for heights of 0
/// and less: there the labels stay level with their axis.
double CAxisLabels3D::LoweredIntercept(double z) const {
    const double lowered =
        z - detail::WorkingDistance(*m_pTransform, m_Saved.m_LabelsDir, kLogLabelDrop);
    return lowered <= 0.0 && m_pTransform->GetAxisScaleMode(2) != 0 ? z : lowered;
}

/// The text of a label: a user string, of which there may be too few, or the number.
CString CAxisLabels3D::LabelAt(int index, double value) const {
    if (!HasNames()) return AxisNumToString(value, m_Saved.m_LabelsFormat);
    if (index >= m_Saved.m_NumLabelsStrings) return {};
    return m_pLabelsStrings[static_cast<std::size_t>(index)];
}

void CAxisLabels3D::CalcLabel(Run& run, double value) {
    const int index = run.index++;
    // The walks keep inside the limits; values that a host gave may lie anywhere.
    if (value < run.min || value > run.max) return;
    detail::PointOnAxis(m_Saved.m_AxisType, value, run.i1, run.i2, run.location);
    calcticpoint(run.location, run.offset, m_Saved.m_LabelsDir);
    if (!detail::IsLabelShown(value, run.min, run.center, run.max, run.tolerance,
                              m_Saved.m_LabelsEnds))
        return;
    const CString text = LabelAt(index, value);
    CTextObj3D* const label = m_LabelObjs.GetAt(NewLabelObj(text) - 1);
    label->SetJustify(run.just.x, run.just.y);
    label->SetColor(m_Saved.m_LabelsColor);
    label->SetLocation(run.location);
    label->SetRotation(m_Saved.m_LabelsRotation);
    label->SetFlipX(m_Saved.m_LabelsFlipX);
    label->SetFlipY(m_Saved.m_LabelsFlipY);
    label->SetTextPlane(m_Saved.m_LabelsPlane);
    label->SetCharSize(m_Saved.m_LabelsSize);
    label->SetHalo(m_Added.halo);
}

int CAxisLabels3D::NewLabelObj(const CString& s) {
    constexpr detail::Origin origin{ERR3DCLASS_AXISLABELS3D, "NewLabelObj"};
    return detail::AllocateOrRaise(ERR3D_OBJECT_NEW, origin, [&] {
        CFont3D* const font = m_pOpenGL == nullptr ? nullptr : m_pOpenGL->GetFont();
        m_LabelObjs.Append(std::make_unique<CTextObj3D>(m_pOpenGL, font, m_pTransform, s));
        return m_LabelObjs.GetCount();
    });
}

void CAxisLabels3D::FreeLabelObjs() {
    m_LabelObjs.RemoveAll();
}

double CAxisLabels3D::GetMaxLabelLength() const {
    double longest = 0.0;
    for (const auto& label : m_LabelObjs)
        longest = std::max(longest, label->TextWidth());
    return longest;
}

int CAxisLabels3D::CalcTitlePlane(int axisType) {
    constexpr int kPlanes[3] = {1, 2, 1};
    return axisType < 0 || axisType > 2 ? 0 : kPlanes[axisType];
}

CString CAxisLabels3D::AxisNumToString(double value, int format) const {
    return detail::LabelText(value, format, m_Saved.m_LabelsDecimals, m_Added.m_EngString);
}

int CAxisLabels3D::CXJAL3(int axisType, int plane, int rotation) const {
    return detail::TableJustification(m_Saved.m_JustTable, axisType, plane, rotation).x;
}

int CAxisLabels3D::CYJAL3(int axisType, int plane, int rotation) const {
    return detail::TableJustification(m_Saved.m_JustTable, axisType, plane, rotation).y;
}

void CAxisLabels3D::InitLabelJustTable() {
    detail::FillJustTable(m_Saved.m_JustTable);
}

/// Moves a point in data units by a fraction of the working range along a direction.
void CAxisLabels3D::calcticpoint(point3Dtype& p, double length, int dir) const {
    point3Dtype working = m_pTransform->CPTWS(p);
    detail::MoveAlong(working, dir, detail::WorkingDistance(*m_pTransform, dir, length));
    m_pTransform->CPFWS(p, working);
}

void CAxisLabels3D::calctitlepoint(point3Dtype& p, double length, int dir) const {
    detail::MoveAlong(p, dir, length);
}

int CAxisLabels3D::DirectionInBox() const {
    const bool inverted = m_pTransform->IsScaleInverted(m_Saved.m_LabelsDir) != 0;
    return inverted ? Opposite(m_Saved.m_LabelsDir) : m_Saved.m_LabelsDir;
}

void CAxisLabels3D::CalcAxisTitle(const CAxis3D* axis, const point3Dtype& lastLabel) {
    point3Dtype middle = lastLabel;
    const double sum = m_pTransform->CVTWS(m_Saved.m_AxisType, axis->GetAxisMin()) +
                       m_pTransform->CVTWS(m_Saved.m_AxisType, axis->GetAxisMax());
    coordassign(middle, m_Saved.m_AxisType, m_pTransform->CVFWS(m_Saved.m_AxisType, sum / 2.0));
    // On a scale that runs backwards, the labels went the other way in the box; so does the title.
    const int dir = DirectionInBox();
    if (m_Saved.m_bAutoTitle != 0) {
        const detail::TitleStyle style = detail::AutoTitleStyle(
            m_Saved.m_AxisType, dir,
            {m_Saved.m_TitleRotation, {m_Saved.m_TitleXJust, m_Saved.m_TitleYJust}});
        m_Saved.m_TitleRotation = style.rotation;
        m_Saved.m_TitleXJust = style.just.x;
        m_Saved.m_TitleYJust = style.just.y;
    }
    point3Dtype place;
    m_pTransform->NormalizePoint(middle, place);
    calctitlepoint(
        place,
        detail::TitleDistance(m_Saved.m_AxisType, m_pTitleObj->TextHeight(), GetMaxLabelLength()),
        dir);
    m_pTitleObj->SetFlipX(m_Saved.m_TitleFlipX);
    m_pTitleObj->SetFlipY(m_Saved.m_TitleFlipY);
    m_pTitleObj->SetNormLocation(place);
    m_pTitleObj->SetCharSize(m_Saved.m_TitleSize);
    m_pTitleObj->SetHalo(m_Added.halo);
    m_pTitleObj->SetColor(m_Saved.m_TitleColor);
    m_pTitleObj->SetTextPlane(m_Saved.m_TitlePlane);
    m_pTitleObj->SetRotation(m_Saved.m_TitleRotation);
    m_pTitleObj->SetJustify(m_Saved.m_TitleFlipY != 0 ? detail::SwapTextJust(m_Saved.m_TitleXJust)
                                                      : m_Saved.m_TitleXJust,
                            m_Saved.m_TitleFlipX != 0 ? detail::SwapTextJust(m_Saved.m_TitleYJust)
                                                      : m_Saved.m_TitleYJust);
}

void CAxisLabels3D::TransformTextPlane(const point3Dtype& chartRotation) {
    if (m_pOpenGL == nullptr) return;
    const double rotation = m_Saved.m_LabelsRotation;
    switch (m_Saved.m_LabelsPlane) {
        case 0:
            m_pOpenGL->Rotate3D(180.0, 0);
            m_pOpenGL->Rotate3D(rotation, 2);
            break;
        case 1:
            m_pOpenGL->Rotate3D(rotation, 2);
            m_pOpenGL->Rotate3D(90.0, 0);
            break;
        case 2:
            m_pOpenGL->Rotate3D(rotation, 2);
            m_pOpenGL->Rotate3D(90.0, 0);
            m_pOpenGL->Rotate3D(-90.0, 2);
            break;
        case 3:
            m_pOpenGL->Rotate3D(-chartRotation.z, 2);
            m_pOpenGL->Rotate3D(-chartRotation.y, 1);
            m_pOpenGL->Rotate3D(-chartRotation.x, 0);
            m_pOpenGL->Rotate3D(90.0, 0);
            m_pOpenGL->Rotate3D(rotation, 2);
            break;
        default:
            break;
    }
}

template <class Archive>
void CAxisLabels3D::RecordStrings(Archive& record) {
    if constexpr (Archive::kLoading) {
        // Each string takes at least its length; an array that the file cannot hold is not there.
        const int count = m_Saved.m_NumLabelsStrings;
        m_Saved.m_NumLabelsStrings = 0;
        m_pLabelsStrings.reset();
        if (!record.Has(count, sizeof(std::int32_t)) || count == 0) return;
        m_pLabelsStrings = detail::AllocateOrRaise(
            ERR3D_OBJECT_NEW, {ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage"},
            [count] { return std::make_unique<CString[]>(static_cast<std::size_t>(count)); });
        m_Saved.m_NumLabelsStrings = count;
    }
    record.Array(m_pLabelsStrings.get(), static_cast<std::size_t>(m_Saved.m_NumLabelsStrings));
}

template <class Archive>
void CAxisLabels3D::Record(Archive& record) {
    if constexpr (!Archive::kLoading) {
        // A transform may have got another identifier since the labels were bound to it, and
        // strings may have gone without their number.
        if (m_pTransform != nullptr) m_Saved.m_nTransformID = m_pTransform->GetSelfID();
        if (m_pLabelsStrings == nullptr) m_Saved.m_NumLabelsStrings = 0;
    }
    record(detail::CounterField{nSelfID}, m_Saved.m_nTransformID);
    record(m_Saved.m_AxisType, m_Saved.m_LabelsPlane, m_Saved.m_LabelsDir, m_Saved.m_LabelsRotation,
           m_Saved.m_LabelsDecimals, m_Saved.m_LabelsFormat, m_Saved.m_LabelsEnds,
           m_Saved.m_LabelsXJust, m_Saved.m_LabelsYJust, m_Saved.m_NumLabelsStrings);
    record(m_Saved.m_LabelsFlipX, m_Saved.m_LabelsFlipY, m_Saved.m_TitleFlipX,
           m_Saved.m_TitleFlipY);
    record(m_Saved.m_TitlePlane, m_Saved.m_TitleDir, m_Saved.m_TitleRotation, m_Saved.m_TitleXJust,
           m_Saved.m_TitleYJust, m_Saved.m_bAutoTitle);
    record(m_Saved.m_LabelsTicOffset, m_Saved.m_LabelsSize, m_Saved.m_TitleSize);
    record.Array(&m_Saved.m_JustTable[0][0][0][0], sizeof m_Saved.m_JustTable / sizeof(int));
    record(m_Saved.m_bLabelsEnable, m_Saved.m_bTextureEnable, m_Saved.m_bStringsEnable);
    record(m_Saved.m_LabelsColor, m_Saved.m_TitleColor);
    RecordStrings(record);
    if constexpr (Archive::kLoading) {
        m_pTitleObj->Load(&record.GetFile());
    } else {
        m_pTitleObj->Save(&record.GetFile());
    }
}

void CAxisLabels3D::SetAxisLabelsValues(std::span<const double> values) {
    m_Added.values.assign(values.begin(), values.end());
}

void CAxisLabels3D::FillContent(detail::AxisContent& content) const {
    content.title = m_pTitleObj->GetString();
    content.named = HasNames();
    if (!CanCalculate()) return;
    const Run run = StartRun();
    const double low = m_pTransform->CVTWS(m_Saved.m_AxisType, run.min);
    const double high = m_pTransform->CVTWS(m_Saved.m_AxisType, run.max);
    struct Label {
        double place;
        CString text;
    };
    std::vector<Label> labels;
    int index = 0;
    WalkLabels(run, [&](double value) {
        const int own = index++;
        const double place = (m_pTransform->CVTWS(m_Saved.m_AxisType, value) - low) / (high - low);
        if (!(place >= 0.0 && place <= 1.0)) return;
        if (detail::IsLabelShown(value, run.min, run.center, run.max, run.tolerance,
                                 m_Saved.m_LabelsEnds))
            labels.push_back({place, LabelAt(own, value)});
    });
    std::stable_sort(labels.begin(), labels.end(),
                     [](const Label& a, const Label& b) { return a.place < b.place; });
    for (const Label& label : labels) {
        // Logarithmic walks visit their centre twice.
        if (!content.places.empty() && content.places.back() == label.place) continue;
        content.places.push_back(label.place);
        content.texts.push_back(label.text);
    }
}

void CAxisLabels3D::DrawPlaced(std::span<const detail::PlacedText> texts,
                               const detail::TextPlace& place) {
    FreeLabelObjs();
    CTextObj3D title = *m_pTitleObj;
    for (const detail::PlacedText& placed : texts) {
        if (placed.axis != m_Saved.m_AxisType) continue;
        CTextObj3D* text = &title;
        if (placed.isTitle)
            title.SetString(placed.text);
        else
            text = m_LabelObjs.GetAt(NewLabelObj(placed.text) - 1);
        text->SetColor(placed.isTitle ? m_Saved.m_TitleColor : m_Saved.m_LabelsColor);
        text->SetTextPlane(TEXTPLANE_VIEWER);
        text->SetRotation(placed.rotation);
        text->SetJustify(TEXT_START, TEXT_START);
        text->SetFlipX(0);
        text->SetFlipY(0);
        text->SetCharSize(placed.em / place.em);
        text->SetHalo(m_Added.halo);
        text->SetNormLocation(place.Normalized(placed.start));
        text->OutTextNorm();
    }
}

void CAxisLabels3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("values", &Added::values);
        field("halo", &Added::halo);
    });
    fields.Object("title", m_pTitleObj.get());
}

void CAxisLabels3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_AXISLABELS3D);
}

void CAxisLabels3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_AXISLABELS3D);
}

}  // namespace varnel

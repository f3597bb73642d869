// CChartView3D: the chart file.
#include <algorithm>
#include <array>

#include "varnel/bitmap/detail/loaded_pictures.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/watched.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

constexpr detail::Origin kLoad{ERR3DCLASS_CHARTVIEW3D, "Load"};

/// Which values of a chart file's first integers a view can have written. The format has no mark of
/// its own: this is what tells it from a text, a picture or an archive.
struct SaneRange {
    std::int32_t least;
    std::int32_t most;
};
constexpr std::array<SaneRange, 5> kFirstFields = {{
    {0, 1000},     // the font's weight
    {-1, 0xFFFF},  // how many characters it has
    {-1, 255},     // italics
    {-1, 255},     // underline
    {0, 1024},     // the length of the font's name
}};

/// How many fields are read between two looks at the clock.
constexpr int kFieldsAtOnce = 1024;

/// A chart file that is read under the view's watch, and whose first bytes were looked at: they
/// come first again.
class WatchedInput : public File {
 public:
    WatchedInput(File& file, std::size_t size)
        : m_File(file), m_All(static_cast<double>(file.Remaining())), m_First(Start(file, size)) {}

    const std::vector<BYTE>& GetFirst() const { return m_First.GetBytes(); }

    void Write(const void* bytes, std::size_t size) override { m_File.Write(bytes, size); }
    std::uint64_t Remaining() const override {
        const std::uint64_t rest = m_File.Remaining();
        return rest + std::min(m_First.Remaining(), UINT64_MAX - rest);
    }
    void Commit() override { m_File.Commit(); }
    CString Name() const override { return m_File.Name(); }

 protected:
    std::size_t ReadSome(void* bytes, std::size_t size) override {
        const auto ours =
            static_cast<std::size_t>(std::min<std::uint64_t>(size, m_First.Remaining()));
        if (++m_Reads % kFieldsAtOnce == 0)
            detail::Progress(m_All - static_cast<double>(Remaining()), m_All);
        m_First.Read(bytes, ours);
        return ours + m_File.Read(static_cast<BYTE*>(bytes) + ours, size - ours);
    }

 private:
    static std::vector<BYTE> Start(File& file, std::size_t size) {
        std::vector<BYTE> bytes(
            static_cast<std::size_t>(std::min<std::uint64_t>(size, file.Remaining())));
        bytes.resize(file.Read(bytes.data(), bytes.size()));
        return bytes;
    }

    File& m_File;
    double m_All;
    MemoryFile m_First;
    int m_Reads = 0;
};

/// A chart file that is written under the view's watch. How long it becomes is not known, so that
/// only the objects count.
class WatchedOutput : public File {
 public:
    explicit WatchedOutput(File& file) : m_File(file) {}

    void Write(const void* bytes, std::size_t size) override {
        detail::ProgressStep();
        m_File.Write(bytes, size);
    }
    std::uint64_t Remaining() const override { return 0; }
    void Commit() override { m_File.Commit(); }

 protected:
    std::size_t ReadSome(void*, std::size_t) override { return 0; }

 private:
    File& m_File;
};

/// Whether a file that begins like this can be a chart file; one that ends there is cut off.
bool CanBeAChartFile(const std::vector<BYTE>& bytes) {
    MemoryFile file(bytes);
    detail::RecordReader record(file);
    return std::ranges::all_of(kFirstFields, [&](const SaneRange& range) {
        std::int32_t value = range.least;
        record(value);
        return range.least <= value && value <= range.most;
    });
}

}  // namespace

/// What a file holds, apart from the view until all of it is read.
struct CChartView3D::Staged {
    Saved saved;
    ObjectList<CChart3D> charts;
    ObjectList<CLegend3D> legends;
    CHeader3D header;
    detail::AddedFields added;
    bool complete = true;
};

void CChartView3D::VisitAdded(detail::AddedFields& fields, const ObjectList<CChart3D>& charts,
                              const ObjectList<CLegend3D>& legends) {
    fields.Of(m_Added, [](auto field) {
        field("headerOnTop", &Added::headerOnTop);
        field("transparency", &Added::transparency);
        field("dpi", &Added::dpi);
        field("lineUnits", &Added::lineUnits);
        field("alignCharts", &Added::alignCharts);
        field("samples", &Added::samples);
    });
    fields.Object("header", m_pHeader.get());
    fields.List("chart", charts);
    fields.List("legend", legends);
}

void CChartView3D::Save(const CString& fileName) {
    CString why;
    const auto file = OpenOutputFile(fileName, &why);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "Save", why);
    detail::WithFile(file.get(), {ERR3DCLASS_CHARTVIEW3D, "Save"}, [this](File& f) {
        // A file that is stopped is not committed: the old one stays.
        Watched("saving", [&] {
            WatchedOutput output(f);
            WriteAll(output);
            f.Commit();
        });
    });
}

void CChartView3D::WriteAll(File& f) {
    detail::RecordWriter record(f);
    m_Saved.Record(record);
    record(std::int32_t{m_ChartList.GetCount()});
    double done = 0.0;
    for (const auto& chart : m_ChartList) {
        detail::Progress(done++, m_ChartList.GetCount());
        chart->Save(&f);
    }
    record(std::int32_t{m_LegendList.GetCount()});
    for (const auto& legend : m_LegendList)
        legend->Save(&f);
    m_pHeader->Save(&f);
    // A file of plain charts is the plain one, whatever they are drawn with.
    const bool automatic = std::ranges::any_of(
        m_ChartList, [](const auto& chart) { return chart->GetAutoText() != 0; });
    m_Added.samples = automatic ? GetAntialiasing() : 0;
    detail::AddedFields fields;
    VisitAdded(fields, m_ChartList, m_LegendList);
    fields.WriteBlock(f);
}

void CChartView3D::ReadStaged(File& file, Staged& staged) {
    detail::RecordReader record(file);
    staged.saved = m_Saved;
    staged.saved.Record(record);
    std::int32_t charts = 0;
    record(charts);
    for (std::int32_t i = 0; i < charts && record.Has(1, 1); ++i) {
        RequireContext("NewChart3D");
        staged.charts.Append(detail::NewObject<CChart3D>({kLoad.cls, "NewChart3D"}, this))
            ->Load(&file);
    }
    std::int32_t legends = 0;
    record(legends);
    for (std::int32_t i = 0; i < legends && record.Has(1, 1); ++i) {
        RequireContext("NewLegend3D");
        staged.legends.Append(detail::NewObject<CLegend3D>({kLoad.cls, "NewLegend3D"}, this))
            ->Load(&file);
    }
    staged.header.CopyFrom(*m_pHeader);
    staged.header.Load(&file);
    staged.added = detail::AddedFields::ReadBlock(file, staged.complete);
    staged.complete = staged.complete && !file.RanDry();
}

void CChartView3D::Load(const CString& fileName) {
    CString why;
    const auto file = OpenInputFile(fileName, &why);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_INPUT, kLoad.cls, kLoad.operation, why);
    const GLContext::HostContextGuard host;
    const detail::LoadedPictures pictures;
    Staged staged;
    bool read = false;
    detail::WithFile(file.get(), kLoad, [&](File& f) {
        WatchedInput chartFile(f, kFirstFields.size() * sizeof(std::int32_t));
        if (!CanBeAChartFile(chartFile.GetFirst()))
            detail::Raise(ERR3D_FILE_OPEN_INPUT, kLoad.cls, kLoad.operation,
                          fileName + " is no chart file");
        read = Watched("loading", [&] { ReadStaged(chartFile, staged); });
    });
    if (!read) return;
    m_Saved = staged.saved;
    m_FontChanged = 1;
    m_pHeader->CopyFrom(staged.header);
    VisitAdded(staged.added, staged.charts, staged.legends);
    staged.added.TellUnknown();
    if (m_Added.samples > 0) SetAntialiasing(m_Added.samples);
    m_ChartList.AppendAll(staged.charts);
    m_LegendList.AppendAll(staged.legends);
    m_LoadComplete = staged.complete ? 1 : 0;
    if (!staged.complete)
        detail::Diagnose("Load", fileName, " is damaged or ends too early; the rest is loaded");
}

}  // namespace varnel

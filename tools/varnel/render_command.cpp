#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>

#include "tools/varnel/commands.h"
#include "tools/varnel/limited_process.h"
#include "varnel/chart/apply_theme.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/version.h"
#include "varnel/platform/window.h"
#include "varnel/viewer/chart_files.h"

namespace tool {

using namespace varnel;

namespace {

namespace fs = std::filesystem;

struct Job {
    std::string file;
    std::string picture;
};

std::string LowerCaseExtension(const std::string& file) {
    std::string extension = fs::path(file).extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

/// Where each picture goes; empty, and told, when that cannot be.
std::vector<Job> PlanJobs(const RenderOptions& options) {
    const bool isFolder = options.files.size() > 1 || options.output.ends_with('/') ||
                          fs::is_directory(options.output);
    if (!isFolder) {
        const char* const known[] = {".png", ".bmp", ".pdf", ".svg"};
        if (std::ranges::find(known, LowerCaseExtension(options.output)) != std::end(known))
            return {{options.files.front(), options.output}};
        std::cerr << "varnel: The picture " << options.output
                  << " has to end in .png, .bmp, .pdf or .svg.\n";
        return {};
    }
    std::error_code error;
    fs::create_directories(options.output, error);
    if (!fs::is_directory(options.output)) {
        std::cerr << "varnel: " << options.output << " is no folder"
                  << (error ? ": " + error.message() : "") << ".\n";
        return {};
    }
    std::vector<Job> jobs;
    std::map<std::string, std::string> taken;
    for (const std::string& file : options.files) {
        const fs::path name = fs::path(file).stem().string() + "." + options.format;
        const std::string picture = (fs::path(options.output) / name).string();
        const auto [before, isNew] = taken.emplace(picture, file);
        if (!isNew) {
            std::cerr << "varnel: " << before->second << " and " << file << " would both become "
                      << picture << ".\n";
            return {};
        }
        jobs.push_back({file, picture});
    }
    return jobs;
}

void Tell(const std::string& sentence) {
    std::cerr << "varnel: " << sentence << std::endl;
}

volatile std::sig_atomic_t interrupted = 0;

/// The first Ctrl-C stops what is being drawn, the second ends the program at once: what is on disk
/// is whole either way.
void OnInterrupt(int) {
    if (interrupted != 0) _exit(kInterrupted);
    interrupted = 1;
}

/// A line on a terminal that says how far things are; nothing where standard error is a file.
class Progress {
 public:
    explicit Progress(std::size_t count) : m_Count(count), m_Shown(isatty(2) != 0) {}
    ~Progress() { Clear(); }
    void Begin(std::size_t done, const std::string& file) {
        m_Title = std::to_string(done + 1) + "/" + std::to_string(m_Count) + "  " + file;
        if (m_Shown && m_Count > 1) std::cerr << "\r\033[K" << m_Title << std::flush;
    }
    /// How far the file is. Short work is over before anybody could read this.
    void Show(double fraction) const {
        constexpr int kWidth = 30;
        if (!m_Shown) return;
        const int done = static_cast<int>(kWidth * fraction);
        std::cerr << "\r\033[K" << m_Title << "  ["
                  << std::string(static_cast<std::size_t>(done), '#')
                  << std::string(static_cast<std::size_t>(kWidth - done), ' ') << ']' << std::flush;
    }
    void Clear() const {
        if (m_Shown) std::cerr << "\r\033[K" << std::flush;
    }

 private:
    std::size_t m_Count;
    bool m_Shown;
    std::string m_Title;
};

/// The view's own title, or that of its first chart that has one.
std::string TitleOf(const CChartView3D& view) {
    std::string title = view.GetHeader()->GetTitle1();
    for (int i = 0; title.empty() && i < view.GetNumCharts(); ++i)
        title = view.GetChart(i)->GetHeader()->GetTitle1();
    return title;
}

void WritePicture(CChartView3D& view, const std::string& picture, const PageSize& page) {
    const std::string extension = LowerCaseExtension(picture);
    if (extension == ".pdf")
        view.SaveToPDF(picture, page);
    else if (extension == ".svg")
        view.SaveToSVG(picture, page);
    else if (extension == ".bmp")
        view.SaveToFile(picture);
    else
        view.SaveToPNG(picture, {TitleOf(view), "Varnel " VARNEL_VERSION, view.GetDPI()});
}

int DrawOne(const Job& job, const RenderOptions& options, const Progress& progress) {
    try {
        CWnd window(options.size.width, options.size.height);
        CChartView3D view(&window, options.size.width, options.size.height);
        view.SetVectorTextPaths(options.textPaths ? 1 : 0);
        view.SetProgressHandler([&](double fraction, const CString&) {
            progress.Show(fraction);
            return interrupted == 0;
        });
        const Loaded loaded = LoadChartFile(view, job.file);
        if (!loaded.sentence.empty()) Tell(loaded.sentence);
        if (!loaded.usable) return kFailed;
        Theme theme;
        if (!options.theme.empty() && Theme::Find(options.theme, theme)) ApplyTheme(view, theme);
        view.SetAntialiasing(options.samples);
        WritePicture(view, job.picture,
                     PageSize::Millimetres(options.size.pageWidth, options.size.pageHeight));
        if (view.GetStopped() != 0) return kInterrupted;
        // A picture of a part of the chart is a picture, but no success.
        return loaded.sentence.empty() ? kDone : kDamaged;
    } catch (const Error& e) {
        Tell(Describe("The picture " + job.picture + " cannot be made", e));
    } catch (const std::bad_alloc&) {
        Tell("The picture " + job.picture + " cannot be made: there is not enough memory.");
    }
    return kFailed;
}

int DrawLimited(const Job& job, const RenderOptions& options, const Progress& progress) {
    const Limits limits{options.limitSeconds, options.limitMemory};
    const Outcome outcome = RunLimited(limits, [&] { return DrawOne(job, options, progress); });
    switch (outcome.end) {
        case Outcome::End::Exited:
            return outcome.value;
        case Outcome::End::OutOfTime:
            Tell(job.file + " took longer than the limit of time.");
            return kLimit;
        default:
            Tell(job.file + " ended its process" +
                 (limits.memory > 0 ? ", perhaps at the limit of memory" : "") + " (" +
                 strsignal(outcome.value) + ").");
            return limits.memory > 0 ? kLimit : kFailed;
    }
}

}  // namespace

int Render(const RenderOptions& options) {
    const std::vector<Job> jobs = PlanJobs(options);
    if (jobs.empty()) return kFailed;
    std::signal(SIGINT, OnInterrupt);
    const bool limited = options.limitSeconds > 0 || options.limitMemory > 0;
    std::map<int, std::size_t> counts;  // of files, by status
    std::size_t done = 0;
    {
        Progress progress(jobs.size());
        for (; done < jobs.size() && interrupted == 0; ++done) {
            progress.Begin(done, jobs[done].file);
            const int status = limited ? DrawLimited(jobs[done], options, progress)
                                       : DrawOne(jobs[done], options, progress);
            if (status == kInterrupted) break;
            ++counts[status];
        }
    }
    if (jobs.size() > 1 && counts[kDone] < jobs.size())
        std::cerr << "varnel: " << counts[kDone] + counts[kDamaged] << " of " << jobs.size()
                  << " pictures made, " << counts[kDamaged] << " of them from damaged files.\n";
    if (done < jobs.size()) return kInterrupted;
    for (const int status : {kFailed, kLimit, kDamaged})
        if (counts[status] > 0) return status;
    return kDone;
}

}  // namespace tool

// Tics of numbers and their labels, for an axis whose length changes with the view.
#pragma once

#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "varnel/scale/auto_scale.h"
#include "varnel/scale/tic_labels.h"

namespace varnel::detail {

/// The tics and labels of numbers that were chosen last. A layout asks for those of very many
/// lengths, and for the same ones again at the next drawing.
class KnownTics {
 public:
    struct Entry {
        AxisScale scale;
        TicLabels labels;
    };

    const Entry& Get(double min, double max, const ScaleOptions& options) {
        if (m_Entries.size() >= kMost || !(std::isfinite(min) && std::isfinite(max)))
            m_Entries.clear();
        const Key key{min, max, options.length, options.across, options.logarithmic, options.whole};
        if (const auto found = m_Entries.find(key); found != m_Entries.end()) return found->second;
        Entry entry{TicsInside(min, max, options), {}};
        LabelOptions writing;
        // Less than a decade is written like a linear axis.
        writing.logarithmic = entry.scale.logarithmic && entry.scale.majorStep == 0.0;
        writing.allowNote = true;
        entry.labels = ChooseLabels(entry.scale.majors, writing);
        return m_Entries[key] = std::move(entry);
    }

 private:
    static constexpr std::size_t kMost = 256;
    using Key = std::tuple<double, double, double, bool, bool, bool>;

    std::map<Key, Entry> m_Entries;
};

}  // namespace varnel::detail

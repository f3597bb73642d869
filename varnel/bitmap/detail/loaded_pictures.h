// The pictures of a chart file that is being loaded: each is decoded once, however many planes name
// it.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include "varnel/bitmap/dib.h"

namespace varnel::detail {

/// While it lives, planes that are loaded on this thread share their pictures. One inside another
/// is part of it.
class LoadedPictures {
 public:
    using Key = std::pair<CString, DibOffset>;  ///< the name in the file, and how it is read

    LoadedPictures() : m_Outer(t_Current) {
        if (m_Outer == nullptr) t_Current = this;
    }
    ~LoadedPictures() { t_Current = m_Outer; }
    LoadedPictures(const LoadedPictures&) = delete;
    LoadedPictures& operator=(const LoadedPictures&) = delete;

    /// The picture of a key, made by `load` when it is the first time or nothing is being loaded.
    /// One that is null is asked for again.
    template <class Load>
    static std::shared_ptr<CDib> Get(const Key& key, Load&& load) {
        if (t_Current == nullptr) return load();
        std::shared_ptr<CDib>& kept = t_Current->m_Pictures[key];
        if (kept == nullptr) kept = load();
        return kept;
    }

 private:
    static inline thread_local LoadedPictures* t_Current = nullptr;

    LoadedPictures* m_Outer;
    std::map<Key, std::shared_ptr<CDib>> m_Pictures;
};

}  // namespace varnel::detail

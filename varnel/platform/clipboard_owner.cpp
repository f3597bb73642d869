// The selection protocol of the Inter-Client Communication Conventions Manual, owner's side.
#include "varnel/platform/detail/clipboard_owner.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <utility>

#include "varnel/platform/detail/x11_connection.h"

namespace varnel::detail {
namespace {

/// The most bytes that are given in one piece; more is given in pieces of this size.
constexpr std::size_t kPiece = std::size_t{256} * 1024;

struct Atoms {
    Atom clipboard, targets, timestamp, multiple, pair, incremental;
};

/// A form on its way to a program, as long as that program takes pieces.
struct Transfer {
    Window requestor;
    Atom property;
    Atom type;
    std::shared_ptr<const std::vector<BYTE>> bytes;
    std::size_t sent = 0;
};

struct Offer {
    Atom type;
    std::shared_ptr<const std::vector<BYTE>> bytes;
};

const unsigned char* AsBytes(const void* data) {
    return static_cast<const unsigned char*>(data);
}

class Owner : public ClipboardOwner {
 public:
    explicit Owner(std::shared_ptr<X11Connection> connection)
        : m_Connection(std::move(connection)) {}
    ~Owner() override {
        m_Connection->Do([this](Display* d) { XDestroyWindow(d, m_Window); });
    }

    bool Take(std::vector<ClipboardForm> forms);
    int Fd() const override { return m_Connection->Fd(); }
    bool Pump() override;
    void Wait(int milliseconds) override { m_Connection->Wait(milliseconds); }

 private:
    bool NextEvent(XEvent& event);
    void Answer(const XSelectionRequestEvent& request);
    bool Give(Window requestor, Atom target, Atom property);
    bool GiveForm(const Offer& offer, Window requestor, Atom property);
    bool GivePairs(Window requestor, Atom property);
    bool GiveAtoms(Window requestor, Atom property, const std::vector<Atom>& atoms, Atom type);
    void GiveNextPiece(Window requestor, Atom property);
    void Drop(Window requestor);
    void Deselect(Window requestor);

    std::shared_ptr<X11Connection> m_Connection;
    Window m_Window = None;
    Atoms m_Atoms{};
    Time m_Since = CurrentTime;
    bool m_Owned = false;
    std::vector<Offer> m_Offers;
    std::vector<Transfer> m_Transfers;
};

bool Owner::Take(std::vector<ClipboardForm> forms) {
    const bool prepared = m_Connection->Do([&](Display* d) {
        m_Window = XCreateSimpleWindow(d, DefaultRootWindow(d), 0, 0, 1, 1, 0, 0, 0);
        m_Atoms = {XInternAtom(d, "CLIPBOARD", False), XInternAtom(d, "TARGETS", False),
                   XInternAtom(d, "TIMESTAMP", False), XInternAtom(d, "MULTIPLE", False),
                   XInternAtom(d, "ATOM_PAIR", False), XInternAtom(d, "INCR", False)};
        for (ClipboardForm& form : forms)
            m_Offers.push_back({XInternAtom(d, form.type.c_str(), False),
                                std::make_shared<const std::vector<BYTE>>(std::move(form.bytes))});
        // Owners say since when; the time is the server's and comes with any change of a property.
        XSelectInput(d, m_Window, PropertyChangeMask);
        XChangeProperty(d, m_Window, XA_WM_NAME, XA_STRING, 8, PropModeReplace, AsBytes("v"), 1);
    });
    if (!prepared) return false;
    return m_Connection->Do([this](Display* d) {
        XEvent event;
        if (XCheckTypedWindowEvent(d, m_Window, PropertyNotify, &event))
            m_Since = event.xproperty.time;
        XSetSelectionOwner(d, m_Atoms.clipboard, m_Window, m_Since);
        m_Owned = XGetSelectionOwner(d, m_Atoms.clipboard) == m_Window;
    }) && m_Owned;
}

bool Owner::NextEvent(XEvent& event) {
    bool got = false;
    m_Connection->Read([&](Display* d) {
        got = XPending(d) > 0;
        if (got) XNextEvent(d, &event);
    });
    return got;
}

bool Owner::Pump() {
    for (XEvent event; NextEvent(event);) {
        if (event.type == SelectionRequest)
            Answer(event.xselectionrequest);
        else if (event.type == SelectionClear)
            m_Owned = false;
        else if (event.type == PropertyNotify && event.xproperty.state == PropertyDelete)
            GiveNextPiece(event.xproperty.window, event.xproperty.atom);
        else if (event.type == DestroyNotify)
            Drop(event.xdestroywindow.window);
    }
    return !m_Connection->IsLost() && (m_Owned || !m_Transfers.empty());
}

void Owner::Answer(const XSelectionRequestEvent& request) {
    // Programs from before the conventions name no property.
    const Atom property = request.property != None ? request.property : request.target;
    bool given = false;
    if (request.target == m_Atoms.multiple)
        given = request.property != None && GivePairs(request.requestor, property);
    else
        given = Give(request.requestor, request.target, property);
    XEvent answer{};
    answer.xselection.type = SelectionNotify;
    answer.xselection.requestor = request.requestor;
    answer.xselection.selection = request.selection;
    answer.xselection.target = request.target;
    answer.xselection.property = given ? property : None;
    answer.xselection.time = request.time;
    if (!m_Connection->Do(
            [&](Display* d) { XSendEvent(d, request.requestor, False, NoEventMask, &answer); }))
        Drop(request.requestor);
}

bool Owner::Give(Window requestor, Atom target, Atom property) {
    if (target == m_Atoms.targets) {
        std::vector<Atom> targets = {m_Atoms.targets, m_Atoms.timestamp, m_Atoms.multiple};
        for (const Offer& offer : m_Offers)
            targets.push_back(offer.type);
        return GiveAtoms(requestor, property, targets, XA_ATOM);
    }
    if (target == m_Atoms.timestamp) return GiveAtoms(requestor, property, {m_Since}, XA_INTEGER);
    const auto offer =
        std::ranges::find_if(m_Offers, [=](const Offer& o) { return o.type == target; });
    return offer != m_Offers.end() && GiveForm(*offer, requestor, property);
}

bool Owner::GiveAtoms(Window requestor, Atom property, const std::vector<Atom>& atoms, Atom type) {
    return m_Connection->Do([&](Display* d) {
        XChangeProperty(d, requestor, property, type, 32, PropModeReplace, AsBytes(atoms.data()),
                        static_cast<int>(atoms.size()));
    });
}

bool Owner::GiveForm(const Offer& offer, Window requestor, Atom property) {
    if (offer.bytes->size() <= kPiece)
        return m_Connection->Do([&](Display* d) {
            XChangeProperty(d, requestor, property, offer.type, 8, PropModeReplace,
                            offer.bytes->data(), static_cast<int>(offer.bytes->size()));
        });
    const bool begun = m_Connection->Do([&](Display* d) {
        // The requestor deletes the property each time it has taken a piece.
        XSelectInput(d, requestor, PropertyChangeMask | StructureNotifyMask);
        const auto size = static_cast<unsigned long>(offer.bytes->size());
        XChangeProperty(d, requestor, property, m_Atoms.incremental, 32, PropModeReplace,
                        AsBytes(&size), 1);
    });
    if (!begun) return false;
    // A requestor that asks again for what it has not fetched yet starts anew.
    std::erase_if(m_Transfers, [=](const Transfer& t) {
        return t.requestor == requestor && t.property == property;
    });
    m_Transfers.push_back({requestor, property, offer.type, offer.bytes});
    return true;
}

/// Several forms at once: the property lists pairs of target and property; the property of a form
/// that cannot be given is set to none.
bool Owner::GivePairs(Window requestor, Atom property) {
    constexpr long kMostLongs = 64;
    std::vector<Atom> pairs;
    const bool read = m_Connection->Do([&](Display* d) {
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(d, requestor, property, 0, kMostLongs, False, m_Atoms.pair, &type,
                           &format, &count, &left, &data);
        if (data == nullptr) return;
        const auto* atoms = reinterpret_cast<const Atom*>(data);
        if (type == m_Atoms.pair && format == 32) pairs.assign(atoms, atoms + count);
        XFree(data);
    });
    if (!read || pairs.size() < 2) return false;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        if (pairs[i + 1] != None && !Give(requestor, pairs[i], pairs[i + 1])) pairs[i + 1] = None;
    return GiveAtoms(requestor, property, pairs, m_Atoms.pair);
}

void Owner::GiveNextPiece(Window requestor, Atom property) {
    const auto transfer = std::ranges::find_if(m_Transfers, [=](const Transfer& t) {
        return t.requestor == requestor && t.property == property;
    });
    if (transfer == m_Transfers.end()) return;
    const std::size_t size = std::min(kPiece, transfer->bytes->size() - transfer->sent);
    const bool given = m_Connection->Do([&](Display* d) {
        XChangeProperty(d, requestor, property, transfer->type, 8, PropModeReplace,
                        transfer->bytes->data() + transfer->sent, static_cast<int>(size));
    });
    transfer->sent += size;
    // An empty piece tells the requestor that it has all.
    if (given && size > 0) return;
    m_Transfers.erase(transfer);
    Deselect(requestor);
}

void Owner::Drop(Window requestor) {
    std::erase_if(m_Transfers, [=](const Transfer& t) { return t.requestor == requestor; });
}

void Owner::Deselect(Window requestor) {
    if (std::ranges::any_of(m_Transfers,
                            [=](const Transfer& t) { return t.requestor == requestor; }))
        return;
    m_Connection->Do([&](Display* d) { XSelectInput(d, requestor, NoEventMask); });
}

}  // namespace

std::shared_ptr<ClipboardOwner> ClipboardOwner::Make(const std::string& display,
                                                     std::vector<ClipboardForm> forms) {
    auto connection = X11Connection::Open(display);
    if (!connection) return nullptr;
    auto owner = std::make_shared<Owner>(std::move(connection));
    return owner->Take(std::move(forms)) ? owner : nullptr;
}

}  // namespace varnel::detail

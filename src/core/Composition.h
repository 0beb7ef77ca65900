#pragma once

#include <memory>
#include <typeindex>
#include <utility>
#include <vector>

namespace brivane {

struct Host;

/// What there is once for a machine: settings, tracker, history, quarantine, and the services of
/// the modules. Two compositions know nothing of each other, so two machines live in one process.
///
/// A service is made by the first `get`, which calls its static `make`:
///
///     static std::unique_ptr<CleanerService> make(Composition& composition);
///
/// There, and nowhere else, a service is told where its parts come from; its constructor takes them
/// one by one, as does whoever tests it. Two that need each other end the program. GUI thread.
class Composition {
public:
    /// `host` has to outlive this.
    explicit Composition(Host& host);
    /// Ends the services, those first that were made last: a service may use what its `make` got.
    ~Composition();
    /// That of the real machine, for `main`. Made on first use and never destroyed: work that goes
    /// on ends with the process, which must not wait for a slow disk.
    static Composition& shared();

    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;

    [[nodiscard]] Host& host() const { return m_host; }

    /// Alive as long as this.
    template<typename Service>
    [[nodiscard]] Service& get()
    {
        const std::type_index type = typeid(Service);
        if (void* made = find(type))
            return *static_cast<Service*>(made);
        const Making making(*this, type);
        std::unique_ptr<Service> service = Service::make(*this);
        Service& result = *service;
        keep(type, std::shared_ptr<void>(std::move(service)));
        return result;
    }

private:
    /// Notes what is being made, for as long as it lives.
    class Making {
    public:
        Making(Composition& composition, std::type_index type);
        ~Making() { m_types.pop_back(); }
        Making(const Making&) = delete;
        Making& operator=(const Making&) = delete;

    private:
        std::vector<std::type_index>& m_types;
    };

    [[nodiscard]] void* find(std::type_index type) const;
    void keep(std::type_index type, std::shared_ptr<void> service);

    Host& m_host;
    std::vector<std::pair<std::type_index, std::shared_ptr<void>>> m_services; ///< oldest first
    std::vector<std::type_index> m_making; ///< each for the one before it
};

} // namespace brivane

// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Compares the lookup of a service with the least work that a lookup needs: one lock and one find()
// in a hash table of the same size.

#include <ovrabase/services/ServiceLocator.h>

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace {

using namespace Vyn::OvraBase;

constexpr std::size_t kServices = 50;

template<std::size_t N>
struct Numbered : Service {
    static std::size_t typeId()
    {
        static constexpr std::array<char, 2> number{'0' + N / 10, '0' + N % 10};
        static constexpr std::size_t id = serviceTypeId({number.data(), number.size()});
        return id;
    }
};

template<std::size_t... N>
void lookUpAll(ServiceLocator &locator, std::index_sequence<N...>)
{
    (benchmark::DoNotOptimize(locator.service<Numbered<N>>()), ...);
}

void serviceLookup(benchmark::State &state)
{
    ServiceLocator locator;
    [&]<std::size_t... N>(std::index_sequence<N...>)
    {
        (static_cast<void>(locator.registerService(std::make_unique<Numbered<N>>())), ...);
    }
    (std::make_index_sequence<kServices>());
    for (auto _ : state) {
        lookUpAll(locator, std::make_index_sequence<kServices>());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kServices));
}
BENCHMARK(serviceLookup);

struct LockedMap {
    Service *find(std::size_t id)
    {
        const std::lock_guard guard(lock);
        const auto found = table.find(id);
        return found != table.end() ? found->second.get() : nullptr;
    }
    std::mutex lock;
    std::unordered_map<std::size_t, std::unique_ptr<Service>> table;
};

template<std::size_t... N>
void findAll(LockedMap &map, std::index_sequence<N...>)
{
    (benchmark::DoNotOptimize(map.find(Numbered<N>::typeId())), ...);
}

void lockedMapFind(benchmark::State &state)
{
    LockedMap map;
    [&]<std::size_t... N>(std::index_sequence<N...>)
    {
        (map.table.try_emplace(Numbered<N>::typeId(), std::make_unique<Numbered<N>>()), ...);
    }
    (std::make_index_sequence<kServices>());
    for (auto _ : state) {
        findAll(map, std::make_index_sequence<kServices>());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kServices));
}
BENCHMARK(lockedMapFind);

} // namespace

BENCHMARK_MAIN();

// The time to build frames and to find them in received bytes.

#include "Frame.h"

#include <benchmark/benchmark.h>

namespace {

constexpr quint8 station = 1;

QByteArray frameOf(qsizetype dataBytes)
{
    const frame::Encoded encoded = frame::encode(station, 8, QByteArray(dataBytes, 'x'));
    return encoded.start + encoded.rest;
}

void encodeFrame(benchmark::State& state)
{
    const QByteArray data(state.range(0), 'x');
    for (auto _ : state)
        benchmark::DoNotOptimize(frame::encode(station, 137, data));
    state.SetBytesProcessed(state.iterations() * (state.range(0) + 8));
}
BENCHMARK(encodeFrame)->ArgName("data bytes")->Arg(1)->Arg(220)->Arg(509);

void checkFrame(benchmark::State& state)
{
    const QByteArray data(state.range(0), 'x');
    for (auto _ : state)
        benchmark::DoNotOptimize(frame::checksum(station, 8, data));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(checkFrame)->ArgName("data bytes")->Arg(220)->Arg(509);

void huntHeader(benchmark::State& state, const QByteArray& line)
{
    for (auto _ : state) {
        frame::HeaderHunter hunter(station);
        for (const char byte : line) {
            if (const auto header = hunter.take(static_cast<quint8>(byte)))
                benchmark::DoNotOptimize(header->length);
        }
    }
    state.SetBytesProcessed(state.iterations() * line.size());
}
BENCHMARK_CAPTURE(huntHeader, header_alone, frameOf(220).first(5));
BENCHMARK_CAPTURE(huntHeader, after_4096_bytes_of_noise,
                  QByteArray(4096, 'h') + frameOf(220).first(5));

} // namespace

BENCHMARK_MAIN();

// Long names through the measured line breaking of the transfer pane and the job-end
// notice (WrapLabelText), and the estimate's measure of a long caption on a
// word-wrapping label, at 10,000 to 1,000,000 units: the cost per unit should stay flat
// (Google Benchmark's fitted complexity says which curve it follows).
#include <benchmark/benchmark.h>

#include "kit/Form.h"
#include "kit/LabelText.h"
#include "kit/TextMeasure.h"

namespace {

using base::Text;

// A file name of `n` units: path parts of ten letters and a blank now and then.
Text LongName(std::size_t n) {
  Text name;
  name.reserve(n);
  for (std::size_t i = 0; name.size() < n; ++i)
    name += i % 7 == 6 ? u"Report 2026\\" : u"abcdefghij\\";
  name.resize(n);
  return name;
}

// The pane's label: 4500 twips wide in the standard font, about 49 units a line.
void BM_WrapLabelText(benchmark::State& state) {
  const Text name = LongName(static_cast<std::size_t>(state.range(0)));
  kit::Form form(u"f");
  kit::Label label(form, u"l", {0, 0, 4500, 255});
  const kit::EstimatedTextMeasure measure;
  for (auto _ : state) benchmark::DoNotOptimize(kit::WrapLabelText(name, 4500, label, measure));
  state.SetComplexityN(state.range(0));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_WrapLabelText)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

// A long run without a blank on a word-wrapping label: every line is a hard cut.
void BM_MeasureWrapped(benchmark::State& state) {
  const Text text(static_cast<std::size_t>(state.range(0)), u'x');
  const kit::EstimatedTextMeasure measure;
  for (auto _ : state) benchmark::DoNotOptimize(measure.Measure(text, 8.25, false, 4500));
  state.SetComplexityN(state.range(0));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_MeasureWrapped)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace

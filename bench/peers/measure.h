// How long a question takes. All inputs are asked in turn, so that neither branches nor caches know
// the answer; each time is processor time or the median of several rounds, so that other programs
// disturb little.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <vector>

namespace peers {

struct Result {
  double mean = 0.0, median = 0.0, p90 = 0.0, worst = 0.0;  // nanoseconds a question
  std::size_t right = 0, asked = 0;
};

template <class T>
void Keep(const T& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

namespace measure {

inline double ProcessorTime() {  // nanoseconds
  std::timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

inline double Clock() {  // nanoseconds; cheap to read, but runs on while other programs run
  using namespace std::chrono;
  return static_cast<double>(
      duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count());
}

inline double Quantile(std::vector<double> values, double share) {
  const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + at, values.end());
  return values[static_cast<std::size_t>(at)];
}

inline double CostOf(double (*clock)()) {
  std::vector<double> costs;
  for (int i = 0; i < 1001; ++i) {
    const double before = clock();
    costs.push_back(clock() - before);
  }
  return Quantile(costs, 0.5);
}

}  // namespace measure

// ask(i) answers question i; what it returns is destroyed, and so freed, in time. right(i, answer)
// judges.
//   mean                of all questions: processor time of a round, the median of the rounds
//   median, p90, worst  over the questions: each one's time is the median of the rounds. Questions
//                       of less than kShort are timed by the group, and these are those of the
//                       groups; from kLong on it is processor time too.
template <class Ask, class Right>
Result Measure(std::size_t count, Ask ask, Right right) {
  constexpr double kSeconds = 0.3;                             // for all rounds
  constexpr double kShort = 150.0, kLong = 1e4, kRound = 1e6;  // nanoseconds
  constexpr std::size_t kGroup = 32, kFewest = 5, kMost = 41;
  Result result;
  result.asked = count;
  for (std::size_t i = 0; i < count; ++i) {
    const auto answer = ask(i);
    result.right += right(i, answer);
  }
  const auto round = [&](std::size_t passes) {
    const double before = measure::ProcessorTime();
    for (std::size_t pass = 0; pass < passes; ++pass)
      for (std::size_t i = 0; i < count; ++i) {
        const auto answer = ask(i);
        Keep(answer);
      }
    return (measure::ProcessorTime() - before) / static_cast<double>(passes * count);
  };
  const double first = std::max(1.0, round(1)), questions = static_cast<double>(count);
  const auto passes = static_cast<std::size_t>(std::max(1.0, kRound / (first * questions)));
  const double length = first * questions * static_cast<double>(passes);
  const auto rounds = std::clamp(static_cast<std::size_t>(kSeconds * 1e9 / length), kFewest, kMost);

  std::vector<double> means;
  for (std::size_t r = 0; r < rounds; ++r) means.push_back(round(passes));
  result.mean = measure::Quantile(means, 0.5);

  const std::size_t group = result.mean < kShort ? kGroup : 1, groups = count / group;
  double (*const clock)() = result.mean < kLong ? measure::Clock : measure::ProcessorTime;
  const double cost = measure::CostOf(clock);
  std::vector<std::vector<double>> times(groups);
  for (std::size_t r = 0; r < rounds; ++r)
    for (std::size_t i = 0; i < groups; ++i) {
      const double before = clock();
      for (std::size_t j = group * i; j < group * (i + 1); ++j) {
        const auto answer = ask(j);
        Keep(answer);
      }
      times[i].push_back((clock() - before - cost) / static_cast<double>(group));
    }
  std::vector<double> each;
  for (const auto& t : times) each.push_back(measure::Quantile(t, 0.5));
  result.median = measure::Quantile(each, 0.5);
  result.p90 = measure::Quantile(each, 0.9);
  result.worst = measure::Quantile(each, 1.0);
  return result;
}

}  // namespace peers

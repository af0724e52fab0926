// kurvo_outline.hpp - the last part of kurvo.hpp: regions, and what chains are asked as wholes.
//
//   auto slot = kurvo::Region::Polygon({{0, 0}, {9, 0}, {9, 4}, {0, 4}}, context).value();
//   auto hole = kurvo::Region::Circle({4, 2}, 1, context).value();
//   if (auto plate = slot - hole) Use(*plate);
#ifndef KURVO_OUTLINE_HPP
#define KURVO_OUTLINE_HPP

#include <kurvo.hpp>

#if defined(__cpp_lib_expected)
namespace kurvo::inline with_std_expected {
#else
namespace kurvo::inline with_own_expected {
#endif

inline int32_t OutlineVersion() { return KurvoOutlineVersion(); }

inline KurvoOptions Options::Record() const {
  KurvoOptions record{};
  record.size = sizeof record;
  record.flags = with_origins ? KURVO_WITH_ORIGINS : 0;
  record.tol = tol;
  record.gap = gap;
  record.miter_limit = miter_limit;
  record.phase = phase;
  record.join = static_cast<int32_t>(join);
  record.cap = static_cast<int32_t>(cap);
  record.dash_count = detail::Count(dashes.size());
  record.dashes = dashes.data();
  if (proceed) {
    record.user = const_cast<void*>(static_cast<const void*>(&proceed));
    record.proceed = [](double done, void* user) {
      return (*static_cast<const std::function<bool(double)>*>(user))(done) ? 1 : 0;
    };
  }
  return record;
}

namespace detail {

inline const double* Raw(std::span<const Point> points) {
  return reinterpret_cast<const double*>(points.data());
}
inline const KurvoPlace* Raw(std::span<const Place> places) {
  return reinterpret_cast<const KurvoPlace*>(places.data());
}
template <class T>
T* Raw(Array<T>& array) {
  return array.Data();
}
inline KurvoPlace* Raw(Array<Place>& array) { return array.size() ? array[0].Get() : nullptr; }
inline const Cvseq* Raw(std::span<const Chain> chains) {
  return reinterpret_cast<const Cvseq*>(chains.data());
}

// The array that fill(array, g) writes one entry of for each of `size` questions.
template <class T, class Fill>
Result<Array<T>> Many(const char* function, std::size_t size, Context& c, const Fill& fill) {
  return c.Call<Array<T>>(function, [&](Array<T>& out, GlobalVar* g) {
    out = Array<T>::Sized(size, g);
    fill(Raw(out), g);
  });
}

}  // namespace detail

// ---- Regions ----

struct Location {
  Where where = Where::kOutside;
  int32_t turns = 0;  // of the loops around the point, counter-clockwise; 0 on a loop
};
struct Locations {
  Array<Where> where;
  Array<int32_t> turns;
};
struct Packed {  // a region in plain numbers
  Array<int32_t> words;
  Array<double> numbers;
};
struct Clipped;

// Closed chains and how they fill: a range of its loops.
class Region : public detail::Owner<Region, KurvoRegion> {
 public:
  // -- Makers --

  // Of copies of the loops; joints up to `gap` are closed by lines (0: epsilon).
  static Result<Region> Of(std::span<const Chain> loops, Fill rule, Context& c, double gap = 0) {
    return c.Call<Region>("KurvoRegionAdd", [&](Region& out, GlobalVar* g) {
      for (const Chain& loop : loops) KurvoRegionAdd(out.Get(), loop.Get(), gap, g);
      out.SetRule(rule);
    });
  }
  static Result<Region> Of(const Chain& loop, Context& c, double gap = 0) {
    return Of({&loop, 1}, Fill::kNonZero, c, gap);
  }
  static Result<Region> Polygon(std::span<const Point> corners, Context& c) {
    Chain loop;
    if (!KurvocvMallocCvseq(loop.Get(), detail::Count(corners.size())) && !corners.empty())
      return Unexpected(Error{KURVO_ERR_MEMORY, "KurvocvMallocCvseq"});
    for (std::size_t i = 0; i < corners.size(); ++i) {
      auto line = Curve::Line(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0]);
      if (!line) return Unexpected(line.error());
      loop[i] = *std::move(line);
    }
    return Of(loop, c);
  }
  static Result<Region> Polygon(std::initializer_list<Point> corners, Context& c) {
    return Polygon(std::span(corners), c);
  }
  static Result<Region> Rectangle(const kurvo::Box& box, Context& c) {
    return Polygon({box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}}, c);
  }
  static Result<Region> Circle(Point centre, double radius, Context& c) {
    auto circle = Curve::Arc(centre, radius, 0, detail::kTurn);
    if (!circle) return Unexpected(circle.error());
    auto loop = circle->ToChain(c);
    if (!loop) return Unexpected(loop.error());
    return Of(*loop, c);
  }
  static Result<Region> Unpack(std::span<const int32_t> words, std::span<const double> numbers,
                               Context& c) {
    return c.Call<Region>("KurvoRegionUnpack", [&](Region& out, GlobalVar* g) {
      KurvoRegionUnpack(words.data(), detail::Count(words.size()), numbers.data(),
                        detail::Count(numbers.size()), out.Get(), g);
    });
  }
  // Attribute words and origins are copied too.
  Result<Region> Copy(Context& c) const {
    return c.Call<Region>("KurvoRegionCopy",
                          [&](Region& out, GlobalVar* g) { KurvoRegionCopy(Get(), out.Get(), g); });
  }

  // -- Views --

  Fill Rule() const { return static_cast<Fill>(record_.rule); }
  void SetRule(Fill rule) { record_.rule = static_cast<int32_t>(rule); }
  std::size_t size() const {
    return detail::View<const Chain>(record_.loops, record_.count).size();
  }
  Chain* begin() { return reinterpret_cast<Chain*>(record_.loops); }
  Chain* end() { return begin() + size(); }
  const Chain* begin() const { return reinterpret_cast<const Chain*>(record_.loops); }
  const Chain* end() const { return begin() + size(); }
  Chain& operator[](std::size_t i) { return begin()[i]; }
  const Chain& operator[](std::size_t i) const { return begin()[i]; }
  // One for each curve, loop after loop, or none at all.
  std::span<const Origin> Origins() const {
    int64_t count = 0;
    for (const Chain& loop : *this) count += loop.Get()->count;
    return detail::View<const Origin>(record_.origins, count);
  }

  // -- Questions --

  Result<Location> Locate(Point p, Context& c) const {
    return c.Call<Location>("KurvoRegionLocate", [&](Location& out, GlobalVar* g) {
      int32_t where = KURVO_REGION_OUTSIDE;
      KurvoRegionLocate(Get(), p.Data(), 1, &where, &out.turns, g);
      out.where = static_cast<Where>(where);
    });
  }
  Result<Locations> Locate(std::span<const Point> points, Context& c) const {
    return c.Call<Locations>("KurvoRegionLocate", [&](Locations& out, GlobalVar* g) {
      out.where = Array<Where>::Sized(points.size(), g);
      out.turns = Array<int32_t>::Sized(points.size(), g);
      KurvoRegionLocate(Get(), detail::Raw(points), detail::Count(points.size()),
                        reinterpret_cast<int32_t*>(out.where.Data()), out.turns.Data(), g);
    });
  }
  // For each loop the one directly around it, -1 for none.
  Result<Array<int32_t>> Nesting(Context& c) const {
    return detail::Many<int32_t>(
        "KurvoRegionNesting", size(), c,
        [&](int32_t* parents, GlobalVar* g) { KurvoRegionNesting(Get(), parents, g); });
  }
  Result<kurvo::Moments> Moments(Context& c) const {
    return c.Ask<kurvo::Moments>("KurvoRegionMoments", KurvoRegionMoments, Get());
  }
  Result<Packed> Pack(Context& c) const {
    return c.Call<Packed>("KurvoRegionPack", [&](Packed& out, GlobalVar* g) {
      int32_t *words, word_count, number_count;
      double* numbers;
      KurvoRegionPack(Get(), &words, &word_count, &numbers, &number_count, g);
      out.words = Array<int32_t>::Adopt(words, static_cast<std::size_t>(word_count));
      out.numbers = Array<double>::Adopt(numbers, static_cast<std::size_t>(number_count));
    });
  }

  // -- New regions --

  static Result<Region> Combine(Operation operation, const Region& a, const Region& b, Context& c,
                                const Options& options = {}, Report* report = nullptr) {
    return Made("KurvoRegionCombine", KurvoRegionCombine, c, options, report,
                static_cast<int32_t>(operation), a.Get(), b.Get());
  }
  // The difference is the first minus all others, xor what an odd number covers.
  static Result<Region> Combine(Operation operation, std::span<const Region> regions, Context& c,
                                const Options& options = {}, Report* report = nullptr) {
    return c.Call<Region>("KurvoRegionCombineMany", [&](Region& out, GlobalVar* g) {
      auto list = Array<const KurvoRegion*>::Sized(regions.size(), g);
      if (detail::Failed(g)) return;
      std::transform(regions.begin(), regions.end(), list.begin(),
                     [](const Region& region) { return region.Get(); });
      const KurvoOptions record = options.Record();
      KurvoRegionCombineMany(static_cast<int32_t>(operation), list.Data(),
                             detail::Count(regions.size()), &record, out.Get(), report, g);
    });
  }
  Result<Region> Simplified(Context& c, const Options& options = {},
                            Report* report = nullptr) const {
    return Made("KurvoRegionSimplify", KurvoRegionSimplify, c, options, report, Get());
  }
  // Positive distances grow, negative ones shrink.
  Result<Region> Offset(double distance, Context& c, const Options& options = {},
                        Report* report = nullptr) const {
    return Made("KurvoRegionOffset", KurvoRegionOffset, c, options, report, Get(), distance);
  }
  // The parts of open chains inside and outside.
  Result<Clipped> Clip(std::span<const Chain> chains, Context& c, const Options& options = {},
                       Report* report = nullptr) const;

  // -- Changes in place --

  // Appends a copy of a loop.
  Result<void> Add(const Chain& loop, Context& c, double gap = 0) {
    return c.Do("KurvoRegionAdd", KurvoRegionAdd, Get(), loop.Get(), gap);
  }

 private:
  friend class Chain;

  template <class F, class... A>
  static Result<Region> Made(const char* name, const F& function, Context& c,
                             const Options& options, Report* report, A... arguments) {
    return c.Call<Region>(name, [&](Region& out, GlobalVar* g) {
      const KurvoOptions record = options.Record();
      function(arguments..., &record, out.Get(), report, g);
    });
  }
};

static_assert(sizeof(Chain) == sizeof(Cvseq) && std::is_standard_layout_v<Chain>);

struct Clipped {  // chains, which do not close
  Region inside, outside;
};
struct JoinedChains {
  Region closed, open;
};

inline Result<Clipped> Region::Clip(std::span<const Chain> chains, Context& c,
                                    const Options& options, Report* report) const {
  return c.Call<Clipped>("KurvoRegionClip", [&](Clipped& out, GlobalVar* g) {
    const KurvoOptions record = options.Record();
    KurvoRegionClip(Get(), detail::Raw(chains), detail::Count(chains.size()), &record,
                    out.inside.Get(), out.outside.Get(), report, g);
  });
}

namespace detail {

inline const Region* Operand(const Region& region, Error&) { return &region; }
inline const Region* Operand(const Result<Region>& region, Error& error) {
  if (region) return &*region;
  if (error.code == KURVO_ERR_NONE) error = region.error();
  return nullptr;
}
template <class T>
concept RegionOrResult = std::is_same_v<T, Region> || std::is_same_v<T, Result<Region>>;

template <class A, class B>
Result<Region> Combined(Operation operation, const A& a, const B& b) {
  Error error;
  const Region *first = Operand(a, error), *second = Operand(b, error);
  if (!first || !second) return Unexpected(error);
  Context context;
  return Region::Combine(operation, *first, *second, context);
}

}  // namespace detail

// By the tolerances of a new Context. Operands may be results, of which an error is passed on.
template <detail::RegionOrResult A, detail::RegionOrResult B>
Result<Region> operator|(const A& a, const B& b) {
  return detail::Combined(Operation::kUnion, a, b);
}
template <detail::RegionOrResult A, detail::RegionOrResult B>
Result<Region> operator&(const A& a, const B& b) {
  return detail::Combined(Operation::kIntersection, a, b);
}
template <detail::RegionOrResult A, detail::RegionOrResult B>
Result<Region> operator-(const A& a, const B& b) {
  return detail::Combined(Operation::kDifference, a, b);
}
template <detail::RegionOrResult A, detail::RegionOrResult B>
Result<Region> operator^(const A& a, const B& b) {
  return detail::Combined(Operation::kXor, a, b);
}

// ---- Chains as wholes ----

inline Result<double> Chain::Length(Context& c) const {
  return c.Ask<double>("KurvoChainLength", KurvoChainLength, Get());
}
inline Result<Place> Chain::PlaceAt(double length, Context& c) const {
  return c.Ask<Place>("KurvoChainPlaces", KurvoChainPlaces, Get(), &length, 1);
}
inline Result<Array<Place>> Chain::Places(std::span<const double> lengths, Context& c) const {
  return detail::Many<Place>(
      "KurvoChainPlaces", lengths.size(), c, [&](KurvoPlace* places, GlobalVar* g) {
        KurvoChainPlaces(Get(), lengths.data(), detail::Count(lengths.size()), places, g);
      });
}
inline Result<double> Chain::LengthAt(const Place& place, Context& c) const {
  return c.Ask<double>("KurvoChainLengths", KurvoChainLengths, Get(), place.Get(), 1);
}
inline Result<Array<double>> Chain::Lengths(std::span<const Place> places, Context& c) const {
  return detail::Many<double>(
      "KurvoChainLengths", places.size(), c, [&](double* lengths, GlobalVar* g) {
        KurvoChainLengths(Get(), detail::Raw(places), detail::Count(places.size()), lengths, g);
      });
}
inline Result<NearestPlace> Chain::NearestTo(Point p, Context& c) const {
  return c.Call<NearestPlace>("KurvoChainNearest", [&](NearestPlace& out, GlobalVar* g) {
    KurvoChainNearest(Get(), p.Data(), 1, out.place.Get(), &out.distance, g);
  });
}
inline Result<NearestPlaces> Chain::NearestTo(std::span<const Point> points, Context& c) const {
  return c.Call<NearestPlaces>("KurvoChainNearest", [&](NearestPlaces& out, GlobalVar* g) {
    out.places = Array<Place>::Sized(points.size(), g);
    out.distances = Array<double>::Sized(points.size(), g);
    KurvoChainNearest(Get(), detail::Raw(points), detail::Count(points.size()),
                      detail::Raw(out.places), out.distances.Data(), g);
  });
}
inline Result<kurvo::Moments> Chain::Moments(Context& c) const {
  return c.Ask<kurvo::Moments>("KurvoChainMoments", KurvoChainMoments, Get());
}
inline Result<Box> Chain::TightBox(Context& c) const {
  return c.Ask<Box>("KurvoChainTightBox", KurvoChainTightBox, Get());
}

namespace detail {

inline Result<Array<Meeting>> MeetingsOf(const Cvseq* a, const Cvseq* b, Context& c,
                                         const Options& options) {
  return c.Call<Array<Meeting>>("KurvoChainMeetings", [&](Array<Meeting>& out, GlobalVar* g) {
    const KurvoOptions record = options.Record();
    KurvoMeeting* list = nullptr;
    int32_t count = 0;
    KurvoChainMeetings(a, b, &record, &list, &count, g);
    out = Array<Meeting>::Adopt(list, static_cast<std::size_t>(count));
  });
}

}  // namespace detail

inline Result<Array<Meeting>> Chain::Meetings(Context& c, const Options& options) const {
  return detail::MeetingsOf(Get(), nullptr, c, options);
}
inline Result<Array<Meeting>> Chain::Meetings(const Chain& other, Context& c,
                                              const Options& options) const {
  return detail::MeetingsOf(Get(), other.Get(), c, options);
}
inline Result<Polyline> Chain::Flatten(double deviation, Context& c) const {
  return c.Call<Polyline>("KurvoChainFlatten", [&](Polyline& out, GlobalVar* g) {
    Coord* points = nullptr;
    KurvoPlace* places = nullptr;
    int32_t count = 0;
    KurvoChainFlatten(Get(), deviation, &points, &places, &count, g);
    out.points = Array<Point>::Adopt(points, static_cast<std::size_t>(count));
    out.places = Array<Place>::Adopt(places, static_cast<std::size_t>(count));
  });
}
inline Result<Array<Point>> Chain::Vertices(double deviation, Context& c) const {
  return c.Call<Array<Point>>("KurvoChainFlatten", [&](Array<Point>& out, GlobalVar* g) {
    Coord* points = nullptr;
    int32_t count = 0;
    KurvoChainFlatten(Get(), deviation, &points, nullptr, &count, g);
    out = Array<Point>::Adopt(points, static_cast<std::size_t>(count));
  });
}
inline Result<Chain> Chain::Fit(Form form, double deviation, Context& c) const {
  return c.Ask<Chain>("KurvoChainFit", KurvoChainFit, Get(), static_cast<int32_t>(form), deviation);
}
inline Result<Chain> Chain::Trim(const Place& from, const Place& to, Context& c) const {
  return c.Ask<Chain>("KurvoChainTrim", KurvoChainTrim, Get(), from.Get(), to.Get());
}
inline Result<JoinedChains> Chain::Join(std::span<const Curve> curves, Context& c,
                                        const Options& options, Report* report) {
  return c.Call<JoinedChains>("KurvoChainJoin", [&](JoinedChains& out, GlobalVar* g) {
    const KurvoOptions record = options.Record();
    KurvoChainJoin(reinterpret_cast<const ::Curve*>(curves.data()), detail::Count(curves.size()),
                   &record, out.closed.Get(), out.open.Get(), report, g);
  });
}
inline Result<Region> Chain::Stroke(std::span<const Chain> chains, double left, double right,
                                    Context& c, const Options& options, Report* report) {
  return Region::Made("KurvoChainStroke", KurvoChainStroke, c, options, report, detail::Raw(chains),
                      detail::Count(chains.size()), left, right);
}
inline Result<Region> Chain::Stroke(double left, double right, Context& c, const Options& options,
                                    Report* report) const {
  return Stroke({this, 1}, left, right, c, options, report);
}

}  // namespace kurvo

#endif  // KURVO_OUTLINE_HPP

use crate::{Common, Cubic, Halves, Line, Point};
use lyon_geom::euclid::default::{Point2D, Vector2D};
use lyon_geom::euclid::Angle;
use lyon_geom::{Arc, CubicBezierSegment, LineSegment};

fn l(p: Point) -> Point2D<f64> {
    Point2D::new(p.x, p.y)
}

fn line(s: &Line) -> LineSegment<f64> {
    LineSegment { from: l(s[0]), to: l(s[1]) }
}

fn cubic(c: &Cubic) -> CubicBezierSegment<f64> {
    CubicBezierSegment { from: l(c[0]), ctrl1: l(c[1]), ctrl2: l(c[2]), to: l(c[3]) }
}

fn write(found: &[(f64, f64)], swapped: bool, out: &mut [Common; 9]) -> i32 {
    for (o, &(a, b)) in out.iter_mut().zip(found) {
        *o = if swapped { Common { on_a: b, on_b: a } } else { Common { on_a: a, on_b: b } };
    }
    found.len() as i32
}

#[no_mangle]
pub extern "C" fn lyon_line_cubic(s: &Line, c: &Cubic, out: &mut [Common; 9]) -> i32 {
    write(&cubic(c).line_segment_intersections_t(&line(s)), true, out)
}

#[no_mangle]
pub extern "C" fn lyon_cubic_cubic(a: &Cubic, b: &Cubic, out: &mut [Common; 9]) -> i32 {
    write(&cubic(a).cubic_intersections_t(&cubic(b)), false, out)
}

#[no_mangle]
pub extern "C" fn lyon_length(c: &Cubic, tolerance: f64) -> f64 {
    cubic(c).approximate_length(tolerance)
}

#[no_mangle]
pub extern "C" fn lyon_line_position(s: &Line, t: f64) -> Point {
    let p = line(s).sample(t);
    Point { x: p.x, y: p.y }
}

#[no_mangle]
pub extern "C" fn lyon_position(c: &Cubic, t: f64) -> Point {
    let p = cubic(c).sample(t);
    Point { x: p.x, y: p.y }
}

#[no_mangle]
pub extern "C" fn lyon_arc_position(
    centre: Point, radius: f64, from: f64, sweep: f64, t: f64,
) -> Point {
    let arc = Arc {
        center: l(centre),
        radii: Vector2D::new(radius, radius),
        start_angle: Angle::radians(from),
        sweep_angle: Angle::radians(sweep),
        x_rotation: Angle::radians(0.0),
    };
    let p = arc.sample(t);
    Point { x: p.x, y: p.y }
}

#[no_mangle]
pub extern "C" fn lyon_derivative(c: &Cubic, t: f64) -> Point {
    let d = cubic(c).derivative(t);
    Point { x: d.x, y: d.y }
}

#[no_mangle]
pub extern "C" fn lyon_split(c: &Cubic, t: f64, out: &mut Halves) {
    let (first, second) = cubic(c).split(t);
    for (i, half) in [first, second].iter().enumerate() {
        for (j, p) in [half.from, half.ctrl1, half.ctrl2, half.to].iter().enumerate() {
            out[4 * i + j] = Point { x: p.x, y: p.y };
        }
    }
}

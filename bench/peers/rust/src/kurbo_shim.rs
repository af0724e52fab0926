use crate::{Common, Cubic, Halves, Line, Point};
use kurbo::{
    BezPath, CubicBez, ParamCurve, ParamCurveArclen, ParamCurveDeriv, ParamCurveNearest, PathSeg,
    Shape,
};

fn k(p: Point) -> kurbo::Point {
    kurbo::Point::new(p.x, p.y)
}

fn point(p: kurbo::Point) -> Point {
    Point { x: p.x, y: p.y }
}

fn line(l: &Line) -> kurbo::Line {
    kurbo::Line::new(k(l[0]), k(l[1]))
}

fn cubic(c: &Cubic) -> CubicBez {
    CubicBez::new(k(c[0]), k(c[1]), k(c[2]), k(c[3]))
}

#[no_mangle]
pub extern "C" fn kurbo_nearest(c: &Cubic, p: Point, accuracy: f64) -> f64 {
    cubic(c).nearest(k(p), accuracy).0
}

#[no_mangle]
pub extern "C" fn kurbo_line_cubic(l: &Line, c: &Cubic, out: &mut [Common; 9]) -> i32 {
    let found = PathSeg::Cubic(cubic(c)).intersect_line(line(l));
    for (o, x) in out.iter_mut().zip(&found) {
        *o = Common { on_a: x.line_t, on_b: x.segment_t };
    }
    found.len() as i32
}

#[no_mangle]
pub extern "C" fn kurbo_length(c: &Cubic, accuracy: f64) -> f64 {
    cubic(c).arclen(accuracy)
}

#[no_mangle]
pub extern "C" fn kurbo_line_position(l: &Line, t: f64) -> Point {
    point(line(l).eval(t))
}

#[no_mangle]
pub extern "C" fn kurbo_position(c: &Cubic, t: f64) -> Point {
    point(cubic(c).eval(t))
}

#[no_mangle]
pub extern "C" fn kurbo_derivative(c: &Cubic, t: f64) -> Point {
    point(cubic(c).deriv().eval(t))
}

#[no_mangle]
pub extern "C" fn kurbo_split(c: &Cubic, t: f64, out: &mut Halves) {
    for (i, half) in [cubic(c).subsegment(0.0..t), cubic(c).subsegment(t..1.0)].iter().enumerate() {
        for (j, p) in [half.p0, half.p1, half.p2, half.p3].iter().enumerate() {
            out[4 * i + j] = point(*p);
        }
    }
}

/// A closed path of quadratic curves: the start, and two points for each of them.
#[no_mangle]
pub unsafe extern "C" fn kurbo_path_new(points: *const Point, curves: usize) -> *mut BezPath {
    let points = std::slice::from_raw_parts(points, 2 * curves + 1);
    let mut path = BezPath::new();
    path.move_to(k(points[0]));
    for pair in points[1..].chunks(2) {
        path.quad_to(k(pair[0]), k(pair[1]));
    }
    path.close_path();
    Box::into_raw(Box::new(path))
}

#[no_mangle]
pub unsafe extern "C" fn kurbo_path_free(path: *mut BezPath) {
    drop(Box::from_raw(path));
}

#[no_mangle]
pub extern "C" fn kurbo_winding(path: &BezPath, p: Point) -> i32 {
    path.winding(k(p))
}

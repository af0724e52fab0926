//! kurbo and lyon behind C functions. Curves arrive as their control points, which costs a few
//! moves; what would allocate in a call of the library itself does so here.

mod kurbo_shim;
mod lyon_shim;

#[repr(C)]
#[derive(Clone, Copy)]
pub struct Point {
    pub x: f64,
    pub y: f64,
}

/// Parameters on both curves.
#[repr(C)]
#[derive(Clone, Copy)]
pub struct Common {
    pub on_a: f64,
    pub on_b: f64,
}

pub type Line = [Point; 2];
pub type Cubic = [Point; 4];
pub type Halves = [Point; 8];

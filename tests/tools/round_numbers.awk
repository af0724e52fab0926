# Numbers with a fraction in seven digits: their last bits are the C library's.
{
  while (match($0, /-?[0-9]+[.][0-9]+(e[-+][0-9]+)?/)) {
    number = substr($0, RSTART, RLENGTH)
    rounded = number * number < 1e-18 ? "0" : sprintf("%.7g", number)
    printf "%s%s", substr($0, 1, RSTART - 1), rounded
    $0 = substr($0, RSTART + RLENGTH)
  }
  print
}

# For Doxygen: takes out what copies, moves and compares as any value does, and so needs no words; with a
# comment above it, it stays.
/^ *\/\/\//{
  :comment
  n
  /^ *\/\/\//b comment
  b
}
s/^ +([A-Za-z]+)\((const )?\1&&?( [a-z]+)?\)( noexcept)?( = default)?;$//
s/^ +[A-Za-z]+& operator=\(.*\)( noexcept)?( = default)?;$//
s/^ +(\[\[nodiscard\]\] )?friend bool operator==\(.*\)( noexcept)? = default;$//

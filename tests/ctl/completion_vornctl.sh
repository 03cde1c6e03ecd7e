#!/bin/sh
# In place of vornctl for the tests of its completion: with names as an engine would have them; all else by the program
# that VORNCTL names.
case $* in
  '--timeout 1 complete -- history go '*) printf '%s\n' 12 9 1 "0	the time before all of them" ;;
  '--timeout 1 complete -- mice use '*) printf '%s\n' usb-1 virtual ;;
  '--timeout 1 complete -- profiles export ') printf '%s\n' Work Games ;;
  '--timeout 1 complete -- profiles switch '*) printf '%s\n' Default 'Work & Play' "It's" ;;
  *) exec "$VORNCTL" "$@" ;;
esac

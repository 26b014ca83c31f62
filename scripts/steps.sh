# For scripts that check the project step by step: sourced, not run.
# shellcheck shell=bash

step_names=()
step_seconds=()

# step NAME COMMAND…: announces the step, runs the command and records how long it took. A failure ends the script.
step() {
  local name=$1 begin=$SECONDS
  shift
  echo "==> $name ($(date +%T))"
  "$@"
  step_names+=("$name")
  step_seconds+=($((SECONDS - begin)))
}

minutes() { printf '%3d:%02d min' $(($1 / 60)) $(($1 % 60)); }

# Prints the time of every step and of the whole script.
print_steps() {
  local i
  echo
  for i in "${!step_names[@]}"; do echo "$(minutes "${step_seconds[$i]}")  ${step_names[$i]}"; done
  echo "$(minutes $SECONDS)  in all"
}

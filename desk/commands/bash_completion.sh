_cusdesk() {
  local word=${COMP_WORDS[COMP_CWORD]} command='' operands=0 waiting='' seen kind i
  # What stands in front: the command, its operands, an option that still wants its argument.
  # "--option=argument" comes as three words.
  for ((i = 1; i < COMP_CWORD; i++)); do
    seen=${COMP_WORDS[i]}
    if [[ $seen == = ]]; then
      continue
    elif [[ -n $waiting ]]; then
      waiting=''
    elif [[ $seen == -* ]]; then
      [[ -n $(_cusdesk_argument "$command" "$seen") ]] && waiting=$seen
    elif [[ -z $command ]]; then
      command=$seen
    else
      operands=$((operands + 1))
    fi
  done
  [[ $word == = ]] && word=''

  if [[ -n $waiting ]]; then
    kind=$(_cusdesk_argument "$command" "$waiting")
  elif [[ $word == -* ]]; then
    kind=$(_cusdesk_options "$command" "$operands")
  else
    kind=$(_cusdesk_operand "$command" "$((operands + 1))")
  fi
  case $kind in
    @file*)
      mapfile -t COMPREPLY < <(compgen -f -- "$word" || :; compgen -W "${kind#@file}" -- "$word") ;;
    @dir) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    @any | '') COMPREPLY=() ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$kind" -- "$word") ;;
  esac
  if [[ $kind == @* ]]; then compopt -o filenames 2>/dev/null || :; fi
}

complete -F _cusdesk cusdesk

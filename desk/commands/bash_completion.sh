_cusdesk_matches() {  # WORD KIND...: what begins with the word and is of one of these kinds
  local word=$1 kind folders=''
  shift
  for kind in "$@"; do
    case $kind in
      @any) ;;
      @dir) folders=yes ;;
      @file) compgen -f -- "$word" || : ;;
      @*) folders=yes && compgen -f -X "!*${kind#@}" -- "$word" || : ;;
      *) compgen -W "$kind" -- "$word" || : ;;
    esac
  done
  if [[ -n $folders ]]; then compgen -d -- "$word" || :; fi
}

_cusdesk_reply() {  # BEFORE WORD KIND...: fills COMPREPLY, with BEFORE in front of each match
  local before=$1 match
  shift
  COMPREPLY=()
  while IFS= read -r match; do
    COMPREPLY+=("$before$match")
  done < <(_cusdesk_matches "$@")
}

_cusdesk() {
  local word=${COMP_WORDS[COMP_CWORD]} before='' command='' operands=0 waiting='' option='' seen kind i
  # What stands in front: the command, its operands, an option that still wants its argument.
  # "--option=argument" comes as three words in bash, as one in others; so does "--option name=level".
  for ((i = 1; i < COMP_CWORD; i++)); do
    seen=${COMP_WORDS[i]}
    if [[ $seen == '=' ]]; then
      waiting=${waiting:-${option:+$option=}}
    elif [[ -n $waiting ]]; then
      option=$waiting waiting=''
    elif [[ $seen == -* ]]; then
      [[ -n $(_cusdesk_argument "$command" "$seen") ]] && waiting=$seen
    elif [[ -z $command ]]; then
      command=$seen
    else
      operands=$((operands + 1))
    fi
  done
  if [[ $word == '=' ]]; then
    waiting=${waiting:-${option:+$option=}} word=''
  elif [[ $word == --*=* ]]; then
    waiting=${word%%=*} before=${word%%=*}= word=${word#*=}
  fi
  if [[ $word == *=* && -n $(_cusdesk_argument "$command" "$waiting=") ]]; then
    waiting+='=' before+=${word%%=*}= word=${word#*=}
  fi

  if [[ -n $waiting ]]; then
    kind=$(_cusdesk_argument "$command" "$waiting")
  elif [[ $word == -* ]]; then
    kind=$(_cusdesk_options "$command" "$operands")
  else
    kind=$(_cusdesk_operand "$command" "$((operands + 1))")
  fi
  # shellcheck disable=SC2086  # a kind is words
  _cusdesk_reply "$before" "$word" $kind
  if [[ $kind == *@.* && ${#COMPREPLY[@]} == 0 ]]; then _cusdesk_reply "$before" "$word" @file; fi
  if [[ ${COMPREPLY[*]-} == *= ]]; then compopt -o nospace 2>/dev/null || :; fi
  if [[ $kind == *@* ]]; then compopt -o filenames 2>/dev/null || :; fi
}

if [[ -n ${ZSH_VERSION-} ]]; then
  autoload -U +X compinit && compinit -u
  autoload -U +X bashcompinit && bashcompinit
fi
complete -F _cusdesk cusdesk

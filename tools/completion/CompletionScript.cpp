// SPDX-License-Identifier: Apache-2.0
#include "completion/CompletionScript.h"

namespace vastrelline {
namespace {

constexpr std::string_view kBash = R"script(# bash completion of vastrelline. Take it into a shell by
#     source <(vastrelline completion bash)
# or for good as ~/.local/share/bash-completion/completions/vastrelline
_vastrelline() {
    local tool line
    COMPREPLY=()
    tool=$(type -P -- "${1/#\~\//$HOME/}") || return
    while IFS= read -r line; do
        case $line in
            +*) COMPREPLY+=("${line#+}") ;;
            :files*) compopt -o default ;;
            :folders*) compopt -o dirnames ;;
            :nospace) compopt -o nospace ;;
        esac
    done < <("$tool" __complete bash "${COMP_LINE:0:COMP_POINT}" 2>/dev/null)
}
complete -F _vastrelline vastrelline
)script";

constexpr std::string_view kZsh = R"script(#compdef vastrelline
# zsh completion of vastrelline. Take it into a shell, behind compinit, by
#     source <(vastrelline completion zsh)
# or for good as _vastrelline in a folder of $fpath
_vastrelline() {
    local line tool=${(Q)words[1]} tab=$'\t'
    local -a values shown ending before
    tool=${tool/#\~\//$HOME/}
    before=("${(@Q)words[2,CURRENT-1]}")
    for line in "${(@f)$(command "$tool" __complete zsh "=${(Q)PREFIX}" "${before[@]}" 2>/dev/null)}"; do
        case $line in
            +*)
                line=${line#+}
                values+=("${line%%$tab*}")
                if [[ -n ${line#*$tab} ]]; then
                    shown+=("${line%%$tab*}  -- ${line#*$tab}")
                else
                    shown+=("${line%%$tab*}")
                fi
                ;;
            :files*)
                [[ $line == ':files --'* ]] && compset -P '*='
                _files && return 0
                ;;
            :folders*)
                [[ $line == ':folders --'* ]] && compset -P '*='
                _files -/ && return 0
                ;;
            :nospace) ending=(-S '') ;;
        esac
    done
    (( $#values )) && compadd -l -d shown "${ending[@]}" -a -- values
}
if [[ $funcstack[1] == _vastrelline ]]; then
    _vastrelline "$@"
else
    compdef _vastrelline vastrelline
fi
)script";

constexpr std::string_view kFish = R"script(# fish completion of vastrelline. Take it into a shell by
#     vastrelline completion fish | source
# or for good as ~/.config/fish/completions/vastrelline.fish
function __vastrelline_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l tool (string replace -r '^~/' "$HOME/" -- $words[1])
    for line in (command $tool __complete fish "=$current" $words[2..-1] 2>/dev/null)
        switch $line
            case '+*'
                string sub -s 2 -- $line
            case ':files*'
                set -l prefix (string sub -s 8 -- $line)
                # As typed, quotes and all, in the place of an argument of no command: fish's own rules for files.
                for path in (complete -C"'' "(string sub -s (math 1 + (string length -- "$prefix")) -- "$current"))
                    echo -- $prefix$path
                end
            case ':folders*'
                set -l prefix (string sub -s 10 -- $line)
                for path in (__fish_complete_directories (string sub -s (math 1 + (string length -- "$prefix")) -- "$current"))
                    echo -- $prefix$path
                end
        end
    end
end
complete -c vastrelline -f -a '(__vastrelline_complete)'
)script";

constexpr std::string_view kPowerShell =
    R"script(# PowerShell completion of vastrelline. Take it into a shell, or for good into $PROFILE, by
#     vastrelline completion powershell | Out-String | Invoke-Expression
Register-ArgumentCompleter -Native -CommandName vastrelline -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)
    $words = @()
    foreach ($element in $commandAst.CommandElements) {
        if ($element.Extent.EndOffset -ge $cursorPosition) { break }
        if ($element -is [System.Management.Automation.Language.StringConstantExpressionAst]) {
            $words += $element.Value
        } else {
            $words += $element.Extent.Text
        }
    }
    if ($words.Count -eq 0) { return }
    $tool = $words[0]
    $before = @($words | Select-Object -Skip 1)
    & $tool __complete powershell "=$wordToComplete" @before 2>$null | ForEach-Object {
        if (-not $_.StartsWith('+')) { return }
        $parts = $_.Substring(1).Split("`t", 2)
        $text = $parts[0]
        $tip = $text
        if ($parts.Count -gt 1 -and $parts[1]) { $tip = $parts[1] }
        $typed = $text
        if ($text -match '[\s''"`$(){};&|<>@#,]') { $typed = "'" + $text.Replace("'", "''") + "'" }
        [System.Management.Automation.CompletionResult]::new($typed, $text, 'ParameterValue', $tip)
    }
}
)script";

}  // namespace

std::string_view CompletionScript(std::string_view shell) {
    if (shell == "bash") return kBash;
    if (shell == "zsh") return kZsh;
    if (shell == "fish") return kFish;
    return kPowerShell;
}

}  // namespace vastrelline

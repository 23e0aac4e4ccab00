-- Runs inside Neovim; ends it with an error when something is not as it should be.
local function check(fits, what)
  if not fits then
    io.stderr:write("neovim: failed: " .. what .. "\n")
    vim.cmd("cquit")
  end
end

local function wait(what, condition)
  check(vim.wait(15000, condition, 20), what)
end

local function lines()
  return vim.api.nvim_buf_get_lines(0, 0, -1, false)
end

local function passes()
  check(vim.bo.filetype == "tvmlscript", "the file's type")
  local buffer = vim.api.nvim_get_current_buf()

  wait("the diagnostic", function() return #vim.diagnostic.get(buffer) == 1 end)
  local found = vim.diagnostic.get(buffer)[1]
  check(found.code == "S101" and found.lnum == 1, "its code and line")
  check(vim.api.nvim_buf_get_text(buffer, 1, found.col, 1, found.end_col, {})[1] == "お辞義", "its range")

  -- What the writer's keys do.
  vim.api.nvim_buf_set_lines(buffer, 2, 2, false, { "Ａ：（" })
  vim.api.nvim_win_set_cursor(0, { 3, 0 })
  local place = vim.lsp.util.make_position_params()
  place.position.character = 3 -- behind the last letter, where only typing leads
  local answer = vim.lsp.buf_request_sync(buffer, "textDocument/completion", place, 5000)
  local items = select(2, next(answer)).result.items
  local offered = vim.tbl_filter(function(item) return item.label == "うん" end, items)
  check(#offered == 1 and offered[1].textEdit.newText == "うん）", "completion behind the bracket")
  vim.lsp.util.apply_text_edits({ offered[1].textEdit }, buffer, "utf-16")
  check(lines()[3] == "Ａ：（うん）", "the completed line: " .. lines()[3])

  vim.api.nvim_win_set_cursor(0, { 2, #"Ａ：（" })
  vim.ui.select = function(actions, _, choose) choose(actions[1], 1) end
  vim.lsp.buf.code_action({ only = { "quickfix" } })
  wait("the code action", function() return lines()[2] ~= "Ａ：（お辞義）" end)
  check(lines()[2] == "Ａ：（お辞儀）", "the corrected line: " .. lines()[2])
  wait("no diagnostic any more", function() return #vim.diagnostic.get(buffer) == 0 end)

  vim.cmd("TvmlShow")
  wait("the TVML script", function() return vim.bo.buftype == "nofile" end)
  check(vim.api.nvim_get_current_line():find("gesture") or
    table.concat(lines(), "\n"):find("こんばんは"), "what it shows")
end

local fine, failure = pcall(passes)
check(fine, tostring(failure))
vim.cmd("qall!")

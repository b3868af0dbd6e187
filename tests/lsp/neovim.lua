-- Plays a person with Neovim on a game's folder; prints what the language server made of it.
local said = {}
local function say(...) table.insert(said, table.concat({ ... }, " ")) end
local function finish()
  vim.fn.writefile(said, vim.env.VELMORA_SAID)
  vim.cmd("qa!")
end
-- Whatever goes wrong is told, and nothing waits for ever.
local ok, failure = pcall(function()
  local function wait(what, condition)
    if not vim.wait(60000, condition, 10) then error("waited for " .. what) end
  end
  vim.cmd("edit Data/B.event")
  say("encoding", vim.bo.fileencoding, vim.bo.fileformat)
  local function codes()
    local all = {}
    for _, d in ipairs(vim.diagnostic.get(0)) do table.insert(all, (d.lnum + 1) .. ":" .. d.code) end
    return table.concat(all, ",")
  end
  local function ask(method, params)
    local answers, failed = vim.lsp.buf_request_sync(0, method, params, 60000)
    if not answers then error(method .. ": " .. failed) end
    local _, answer = next(answers)
    local refusal = answer.err or answer.error -- by version
    return refusal and { failed = refusal.message } or answer.result
  end
  wait("diagnostics", function() return codes() ~= "" end)
  say("opened", codes())

  vim.api.nvim_buf_set_lines(0, 1, 2, false, { "EVENT Peace" })
  wait("the name's", function() return codes() == "" end)
  say("renamed", codes())
  local title = vim.fn.search("Title")
  vim.api.nvim_buf_set_lines(0, title - 1, title, false, { '\tTitle "Café"', "Colour mauve" })
  wait("the token's", function() return codes() ~= "" end)
  say("typed", codes())

  local attribute = vim.fn.search("GoodAttribute")
  vim.api.nvim_win_set_cursor(0, { attribute, 5 })
  say("hover", (ask("textDocument/hover", vim.lsp.util.make_position_params()).contents.value:gsub("\n", " / ")))
  say("symbols", ask("textDocument/documentSymbol", { textDocument = vim.lsp.util.make_text_document_params() })[1].name)
  vim.api.nvim_buf_set_lines(0, title, title + 1, false, {})
  vim.lsp.buf.formatting_sync(nil, 60000)
  say("formatted", vim.fn.getline(title))
  vim.cmd("write")

  vim.cmd("edit ++enc=latin1 Data/Latin1.event")
  wait("diagnostics", function() return codes() ~= "" end)
  say("wrong", codes())
  local params = { textDocument = vim.lsp.util.make_text_document_params(), options = { tabSize = 2, insertSpaces = true } }
  say("refused", ask("textDocument/formatting", params).failed)

  vim.cmd("edit Data/B.SBModule")
  wait("its server", function() return next(vim.lsp.buf_get_clients(0)) ~= nil end)
  vim.fn.search("Module_Requirement")
  vim.cmd("normal 24|")
  vim.lsp.buf.definition()
  wait("the module", function() return vim.fn.expand("%:t") == "A.SBModule" end)
  say("led to", vim.fn.expand("%:t"), vim.fn.getline("."))

  local clients = vim.lsp.get_active_clients()
  vim.lsp.stop_client(clients)
  for _, client in ipairs(clients) do
    wait("the end", function() return vim.lsp.client_is_stopped(client.id) end)
  end
  say("stopped")
end)
if not ok then say("FAILED", failure) end
finish()
